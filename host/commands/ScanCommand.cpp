#include "host/commands/ScanCommand.hpp"

#include <iostream>

#include <CLI/App.hpp>

namespace nivlo {

ScanCommand::ScanCommand(CLI::App& app)
    : Command(app, "scan", "Read the codes in picture files, as a live camera would") {
  arguments().add_option("FILE", options_.files, "PNG, JPEG or WebP pictures")->type_name("")->required();
  arguments().add_flag(
      "--json", options_.json,
      "Print one JSON object per file: file, codes [{type, text, corners}], milliseconds, error");
  arguments().footer(
      "Prints one line per code, 'type: text', preceded by 'FILE: ' if there are several files.\n"
      "Exit status: 0 all files were read, 1 a file could not be read, 2 wrong usage.");
}

int ScanCommand::run() const { return scanFiles(options_, std::cout, std::cerr); }

}  // namespace nivlo
