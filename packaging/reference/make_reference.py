#!/usr/bin/env python3
"""Writes Nivlo's manual page, its completions for three shells and its systemd unit.

usage: make_reference.py REFERENCE.json FRAME OUTPUT_DIRECTORY

REFERENCE.json is what nivlo-reference prints, and FRAME the manual page with @MARKS@ in place of what that tells.
"""
import json
import pathlib
import sys

import bash
import fish
import manual
import zsh


def main():
    reference_path, frame_path, output = (pathlib.Path(argument) for argument in sys.argv[1:])
    reference = json.loads(reference_path.read_text())
    command = reference["command"]
    texts = {
        "nivlo.1": manual.page(frame_path.read_text(), reference),
        "nivlo.bash": bash.completion(command),
        "_nivlo": zsh.completion(command),
        "nivlo.fish": fish.completion(command),
        "nivlo.service": reference["unit"],
    }
    for name, text in texts.items():
        (output / name).write_text(text)


if __name__ == "__main__":
    main()
