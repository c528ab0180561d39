"""Completion for zsh."""
from commands import brief, continues, files, operands, options, walk, words


def quoted(text):
    """The text between single quotes."""
    return "'" + text.replace("'", "'\\''") + "'"


def plain(text):
    """The text with a backslash before each character that divides the parts of a specification."""
    return "".join("\\" + character if character in "[]:\\" else character for character in text)


def action(option):
    if continues(option):
        return '{compadd -S "" ' + " ".join(words(option)) + "}"
    if words(option):
        return f"({' '.join(words(option))})"
    return {"file": "_files", "folder": "_files -/"}.get(files(option), "")


def specifications(option):
    names = option["names"]
    others = "*" if option["repeated"] else f"({' '.join(names)})"
    for name in names:
        value = ""
        if option["takesValue"]:
            name += "=" if name.startswith("--") else "+"
            value = f":{plain(option['value'] or 'value')}:{action(option)}"
        yield f"{others}{name}[{plain(brief(option['help']))}]{value}"


def function(path, command):
    specified = [text for option in options(command) for text in specifications(option)]
    for operand in operands(command):
        place = "*" if operand["repeated"] else ""
        specified.append(f"{place}:{plain(operand['name'])}:{action(operand)}")
    if not command["commands"]:
        lines = ["  _arguments -s -S \\", *(f"    {quoted(text)} \\" for text in specified)]
        return lines[:-1] + [lines[-1].removesuffix(" \\")]
    known = [quoted(f"{plain(each['name'])}:{brief(each['description'])}") for each in command["commands"]]
    cases = [f"    {each['name']}) {name_of(path + ' ' + each['name'])} ;;" for each in command["commands"]]
    return [
        "  local curcontext=$curcontext state line",
        "  local -A opt_args",
        f"  local -a known=({' '.join(known)})",
        "  _arguments -C -S \\",
        *(f"    {quoted(text)} \\" for text in specified),
        "    '1: :->command' '*:: :->arguments'",
        "  case $state in",
        "    command) _describe command known ;;",
        "    arguments)",
        "      case $line[1] in",
        *("    " + case for case in cases),
        "      esac ;;",
        "  esac",
    ]


def name_of(path):
    return "_" + path.replace(" ", "_").replace("-", "_")


def completion(command):
    lines = ["#compdef nivlo", "# Completion of nivlo's command line for zsh. Made from the program's own options."]
    for path, inner in walk(command):
        lines += ["", f"{name_of(path)}() {{", *function(path, inner), "}"]
    return "\n".join([*lines, "", '_nivlo "$@"', ""])
