"""The manual page."""
import textwrap
import xml.etree.ElementTree as xml

from commands import operands, options


def plain(text):
    """The text as roff shows it unchanged."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace("`", "\\(ga")
    # A line that begins with a dot would be a request; one with a quotation mark in \(aq is none.
    return "\n".join("\\&" + line if line.startswith(".") else line for line in text.split("\n"))


def bold(text):
    return f"\\fB{plain(text)}\\fR"


def italic(text):
    return f"\\fI{plain(text)}\\fR"


def filled(text):
    return textwrap.wrap(text, 120, break_long_words=False, break_on_hyphens=False)


def sentence(text):
    return text if text.endswith((".", "?")) else text + "."


def option_name(option):
    if not option["names"]:
        return italic(option["name"]) + (" .\\|.\\|." if option["repeated"] else "")
    separator = "=" if option["names"][-1].startswith("--") else " "
    value = separator + italic(option["value"]) if option["takesValue"] else ""
    return ", ".join(bold(name) for name in option["names"]) + value


def described(option):
    help_text = sentence(option["help"])
    if option["default"]:
        help_text += f" The default is {option['default']}."
    if option["repeated"] and option["names"]:
        help_text += " May be given more than once."
    return [".TP", option_name(option), *(plain(line) for line in filled(help_text))]


def footer(text):
    """Lines that begin with two spaces are an example and stay as they are; the others are filled."""
    lines, literal = [], False
    for line in text.strip("\n").split("\n"):
        if line.startswith("  ") != literal:
            literal = not literal
            lines.append(".EX" if literal else ".EE")
        lines.append(plain(line))
    return [*lines, ".EE"] if literal else lines


def synopsis(path, command):
    words = [bold(path)]
    if options(command):
        words.append("[" + italic("OPTION") + " .\\|.\\|.]")
    words += [option_name(operand) for operand in operands(command)]
    if command["commands"]:
        words.append(italic("COMMAND"))
    return " ".join(words)


def section(path, command, shared):
    """The section of one command. `shared` are the program's own options, which are described already."""
    lines = [f".SS {plain(path)}", synopsis(path, command), ".PP"]
    lines += [plain(line) for line in filled(sentence(command["description"]))]
    for option in command["options"]:
        if option["help"] not in shared:
            lines += described(option)
    known = [bold(option["names"][-1]) for option in command["options"] if option["help"] in shared and option["names"][0] != "-h"]
    if known:
        lines += [".PP", f"It takes these of the options above: {', '.join(known)}."]
    for inner in command["commands"]:
        says = " ".join(filter(None, [inner["name"], *(operand["value"] or operand["name"] for operand in operands(inner))]))
        lines += [".TP", bold(says), *(plain(line) for line in filled(sentence(inner["description"])))]
        for option in options(inner):
            if option["names"][0] != "-h":
                lines += [bold(option["names"][0]) + ":", plain(sentence(option["help"]))]
    return lines + ([".PP", *footer(command["footer"])] if command["footer"] else [])


def commands(command):
    shared = {option["help"] for option in options(command)}
    return [line for inner in command["commands"] for line in section(f"{command['name']} {inner['name']}", inner, shared)]


def methods(description):
    """The methods of the D-Bus interface, as one would write a call."""
    lines = []
    for method in xml.fromstring(description).iter("method"):
        def arguments(direction):
            return [f"{arg.get('name')} {arg.get('type')}" for arg in method.iter("arg") if arg.get("direction") == direction]
        result = f" \\(-> {plain(', '.join(arguments('out')))}" if arguments("out") else ""
        lines += [f"{bold(method.get('name'))}({plain(', '.join(arguments('in')))}){result}", ".br"]
    return lines[:-1]


def properties(description):
    """The properties of the D-Bus interface by their types' codes."""
    named = [f"{bold(each.get('name'))} ({each.get('type')})" for each in xml.fromstring(description).iter("property")]
    return [name + "," for name in named[:-1]] + [named[-1] + "."]


def page(frame, reference):
    command = reference["command"]
    marks = {
        "VERSION": [reference["version"]],
        "DESCRIPTION": [plain(line) for line in filled(command["description"])],
        "OPTIONS": [line for option in options(command) for line in described(option)],
        "COMMANDS": commands(command),
        "METHODS": methods(reference["interface"]),
        "PROPERTIES": properties(reference["interface"]),
        "EXAMPLES": footer(command["footer"]),
    }
    for mark, lines in marks.items():
        frame = frame.replace(f"@{mark}@", "\n".join(lines))
    return frame
