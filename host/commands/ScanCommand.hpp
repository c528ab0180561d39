// "nivlo scan".
#pragma once

#include "host/commands/Command.hpp"
#include "host/scan/ScanFiles.hpp"

namespace nivlo {

/// Reads the codes in picture files.
class ScanCommand : public Command {
 public:
  explicit ScanCommand(CLI::App& app);
  int run() const override;

 private:
  ScanOptions options_;
};

}  // namespace nivlo
