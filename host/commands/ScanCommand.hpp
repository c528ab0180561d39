// Reads codes in picture files.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace nivlo {

struct ScanOptions {
  std::vector<std::filesystem::path> files;
  bool json = false;
};

/// Reads each picture as a live camera's frame is read, for up to ten looks, a second's worth; once a code is
/// found, three looks in a row that find nothing new end it. A 1-D code that is hard to read must show in two
/// of the looks. Pictures are read in processes of their own, on all cores at once; the results come in the
/// order of the files. A counter of the pictures is shown where standard error is a terminal.
///
/// Writes a line a code to `out`: `type: text`, after `FILE: ` when there are several files. Control and
/// invisible characters are escaped (see visibleText). For a picture without codes `FILE: no code found` goes
/// to `err`.
///
/// With `json` it is one object a file and line: `file`, `codes` (each `type`, `text`, and `corners` in
/// pixels, clockwise from the code's own top left), `milliseconds`, and `error` when the file could not be
/// read.
///
/// Returns the exit status: 0 when all files were read, also without a code in them; 1 when one could not be,
/// which `err` tells and which does not keep the others from being read, or when there is no reader, which is
/// logged.
int runScan(const ScanOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nivlo
