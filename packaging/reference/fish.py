"""Completion for fish."""
from commands import brief, files, operands, options, walk, words

HEAD = """# Completion of nivlo's command line for fish. Made from the program's own options.

function __nivlo_at --description 'Returns whether the words before the cursor lead to this command'
    set -l path nivlo
    for word in (commandline -opc)
        if contains -- "$path $word" @PATHS@
            set path "$path $word"
        end
    end
    test "$path" = "$argv"
end

complete -c nivlo -f
"""


def quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def value(option):
    if files(option) == "file":
        return "-F"
    if files(option) == "folder":
        return "-a '(__fish_complete_directories)'"
    return f"-a {quoted(' '.join(words(option)))}" if words(option) else ""


def lines(path, command):
    at = f"complete -c nivlo -n {quoted('__nivlo_at ' + path)}"
    for each in command["commands"]:
        yield f"{at} -a {each['name']} -d {quoted(brief(each['description']))}"
    for option in options(command):
        names = [f"-l {name[2:]}" if name.startswith("--") else f"-s {name[1:]}" for name in option["names"]]
        need = ["-r", value(option)] if option["takesValue"] else []
        yield " ".join([at, *names, *filter(None, need), "-d", quoted(brief(option["help"]))])
    for operand in operands(command):
        if value(operand):
            yield f"{at} {value(operand)}"


def completion(command):
    paths = " ".join(quoted(path) for path, _ in walk(command) if " " in path)
    said = [line for path, inner in walk(command) for line in lines(path, inner)]
    return HEAD.replace("@PATHS@", paths) + "\n".join(said) + "\n"
