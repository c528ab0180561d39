// Reads the codes in picture files.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace nivlo {

struct ScanOptions {
  std::vector<std::filesystem::path> files;
  bool json = false;
};

/// Reads the codes in each picture (see scanPicture), several pictures at a time, one per processor core. The
/// pictures are decoded into codes in child processes. The results are written in the order of the files;
/// while a scan of several files goes on, a counter is shown if `err` is standard error and a terminal.
///
/// Each code is a line `type: text` in `out`, preceded by `FILE: ` if there are several files. Control and
/// invisible characters are escaped (see visibleText). A picture without codes is a line `no code found`,
/// with the same prefix, in `err`.
///
/// With `json`, each file is one object on a line of its own: `file`, `codes` (each with `type`, `text`, and
/// `corners` in pixels, clockwise from the code's own top left), `milliseconds`, and `error` if the file
/// could not be read.
///
/// Returns the exit status: 0 if all files could be read, whether or not they hold codes; 1 if one could not,
/// which `err` explains and which does not stop the others; 1 also if the code reader cannot be started,
/// which is logged.
int scanFiles(const ScanOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nivlo
