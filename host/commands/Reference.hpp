// A description of the program for other programs.
#pragma once

#include <filesystem>
#include <string>

namespace nivlo {

/// Returns a JSON object from which the build makes the manual page, the shells' completions and the systemd
/// unit, so that none of them can differ from the program: "version"; "command", the command line with its
/// options and commands; "interface", the D-Bus interface in XML; "unit", the text of a unit that starts
/// `program` with its default options.
std::string reference(const std::filesystem::path& program);

}  // namespace nivlo
