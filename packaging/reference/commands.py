"""A command line as the completions of all shells see it."""
import re


def walk(command, path="nivlo"):
    """Yields each command with its path, for example "nivlo ctl pause"."""
    yield path, command
    for inner in command["commands"]:
        yield from walk(inner, f"{path} {inner['name']}")


def options(command):
    return [option for option in command["options"] if option["names"]]


def operands(command):
    """The arguments that have no option's name before them."""
    return [option for option in command["options"] if not option["names"]]


def words(option):
    """The words that the option's value can be, or that it begins with if they end in "=" or ":"."""
    kind = option["value"]
    if kind.startswith("{"):
        return kind.strip("{}").split(",")
    if kind.startswith("SIDE="):
        return ["back=", "front="]
    prefix = re.match(r"[a-z]+:", kind)
    return [prefix.group()] if prefix else []


def continues(option):
    """Returns whether something follows the words."""
    return any(word.endswith(("=", ":")) for word in words(option))


def files(option):
    """The files that the option's value can name: "file", "folder" or nothing."""
    kind = option["value"] or option["name"]
    return {"FILE": "file", "WALLPAPER": "folder"}.get(kind, "")


def brief(text):
    """The beginning of a help text, short enough to stand beside a name."""
    clause = re.split(r"[;:] |\. | \(", text, maxsplit=1)[0]
    return clause if len(clause) <= 80 else clause[:77].rsplit(" ", 1)[0].rstrip(",") + "..."
