// Bundles for the program under test.
#pragma once

#include <filesystem>
#include <string>

namespace nivlo::test {

/// Writes FOLDER/NAME.bundle, with the shared object as test.so and an Info.plist that names the class, the
/// executable and, for users, NAME. Returns the bundle's path.
std::filesystem::path writeBundle(const std::filesystem::path& folder, const std::string& name,
                                  const std::string& className, const std::filesystem::path& sharedObject,
                                  const std::string& executable = "test.so");

}  // namespace nivlo::test
