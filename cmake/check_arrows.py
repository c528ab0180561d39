#!/usr/bin/env python3
"""Checks which rooms and headers the sources include, and that docs/architecture.md shows the same.

usage: check_arrows.py ROOT            prints what is wrong, and fails if anything is
       check_arrows.py ROOT --picture  prints the rooms and the arrows between them
       check_arrows.py ROOT --renew    writes that picture into docs/architecture.md
"""
import graphlib
import pathlib
import re
import sys

# For each folder its rooms, and which of the others each of them may include. "*" is what lies directly in the folder.
ARROWS = {
    ".": {
        "host/main.cpp": "host/commands",
        "host/reference.cpp": "host/commands",
        "platform": "",
        "kit": "platform",
        "bundle": "kit platform",
        "linux": "platform",
        "host": "kit linux platform",
    },
    "linux": {
        "handles": "",
        "program": "",
        "timing": "",
        "camera": "handles timing",
        "codes": "handles program timing",
        "names": "handles",
        "desktop": "handles names timing",
        "motion": "handles timing",
        "sound": "handles timing",
    },
    "linux/codes": {
        "picture": "",
        "protocol": "",
        "bars": "picture",
        "decoders": "bars picture",
        "matrix": "picture",
        "retail": "bars decoders picture",
        "strategies": "bars decoders matrix picture retail",
        "*": "bars decoders matrix picture retail strategies",
        "child": "* protocol",
        "process": "picture protocol",
        "pace": "picture",
    },
    "host": {
        "loop": "",
        "render": "",
        "text": "",
        "bundle": "text",
        "dialogs": "",
        "pick": "loop text",
        "power": "loop render show",
        "scan": "text",
        "service": "text",
        "alerts": "dialogs loop text",
        "toolkit": "alerts dialogs loop pick",
        "show": "bundle loop render",
        "log": "show text",
        "surfaces": "loop render",
        "control": "bundle loop service show text",
        "commands": "alerts bundle control dialogs log loop power render scan service show surfaces text",
        "*": "commands",
    },
}
TOP_ROOMS = ("bundle", "kit", "host", "linux", "platform")
PORTABLE_ROOMS = ("bundle", "kit", "platform")
# Headers that the portable rooms may use besides the standard library; pthread.h gives threads their names.
PORTABLE = re.compile(r"fmt/|pugixml\.hpp$|pthread\.h$")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
DOCUMENT = "docs/architecture.md"
SHOWN = re.compile(r"(<!-- rooms -->\n```\n)(.*?)(```\n<!-- end of rooms -->)", re.S)


def read_includes(root, folders):
    """Every source by its path, with what it includes: in angle brackets or not, and the path."""
    files = [path for folder in folders for path in sorted((root / folder).rglob("*.[ch]pp"))]
    return {
        path.relative_to(root).as_posix(): [(mark == "<", target) for mark, target in INCLUDE.findall(path.read_text())]
        for path in files
    }


def lies_in(path, folder, room=""):
    """Returns whether the path lies in the folder, or in this room of it."""
    inside = path if folder == "." else path.removeprefix(folder + "/")
    if folder != "." and inside == path:
        return False
    if room == "*":
        return "/" not in inside
    return not room or inside == room or inside.startswith(room + "/")


def room_of(path, folder):
    return next((room for room in ARROWS[folder] if lies_in(path, folder, room)), None)


def arrow_problems(name, target):
    for folder, rooms in ARROWS.items():
        if not lies_in(name, folder):
            continue
        room = room_of(name, folder)
        if not room:
            yield f"{name}: its room is not in the table of cmake/check_arrows.py"
        elif lies_in(target, folder) and not any(
            lies_in(target, folder, other) for other in [room, *rooms[room].split()]
        ):
            yield f"{name}: must not include {target} (cmake/check_arrows.py lists what may)"


def portability_problems(name, target):
    portable = PORTABLE.match(target) or not ("/" in target or "." in target)
    if name.startswith(tuple(room + "/" for room in PORTABLE_ROOMS)) and not portable:
        yield f"{name}: is portable and must not include <{target}>"


def first_include_problems(name, includes, sources):
    """A header that its own source includes first is known to include all that it needs."""
    stem = name.removesuffix(".cpp")
    own = stem + ".hpp"
    # clang-format does not recognise the own header of a name with a plus, and sorts it among the others.
    if name.endswith(".cpp") and "+" not in stem and own in sources and includes[:1] != [(False, own)]:
        yield f"{name}: must include its own header first"


def circles(sources):
    """Files that include each other in a circle, and rooms that the table lets do so."""
    graphs = [{name: [target for _, target in includes] for name, includes in sources.items()}]
    graphs += [{room: targets.split() for room, targets in rooms.items()} for rooms in ARROWS.values()]
    for graph in graphs:
        try:
            graphlib.TopologicalSorter(graph).prepare()
        except graphlib.CycleError as error:
            yield "these include each other in a circle: " + " -> ".join(reversed(error.args[1]))


def draw_rooms(sources, folder):
    """A line for each room with arrows, ordered so that all of them point downwards, and one for the others."""
    sizes = {room: 0 for room in sorted(ARROWS[folder]) if not room.endswith(".cpp")}
    reached = {room: set() for room in sizes}
    for name, includes in sources.items():
        room = room_of(name, folder) if lies_in(name, folder) else None
        if room in sizes:
            sizes[room] += 1
            reached[room] |= {room_of(target, folder) for _, target in includes if lies_in(target, folder)}
    arrows = {room: sorted(reached[room] & sizes.keys() - {room}) for room in sizes}
    order = [*graphlib.TopologicalSorter(arrows).static_order()]
    yield "." if folder == "." else f"\n{folder}/"
    for room in reversed(order):
        if arrows[room]:
            yield f"  {room:10}{size_of(sizes[room], folder)} -> {', '.join(arrows[room])}"
    leaves = sorted(room for room in order if not arrows[room])
    yield "  " + ", ".join(f"{room:10}{size_of(sizes[room], folder)}".strip() for room in leaves)


def size_of(count, folder):
    """Only the large rooms show their size, rounded so that few changes make the document outdated."""
    return f"{count if count < 10 else round(count, -1):6} files" if folder == "." else ""


def draw(sources):
    return "".join(line + "\n" for folder in ARROWS for line in draw_rooms(sources, folder))


def find_problems(sources):
    rooms = {name: includes for name, includes in sources.items() if name.startswith(TOP_ROOMS)}
    for name, includes in rooms.items():
        for system, target in includes:
            yield from portability_problems(name, target) if system else arrow_problems(name, target)
    for name, includes in sources.items():
        yield from first_include_problems(name, includes, sources)
    yield from circles(sources)


def main(root, task="--check"):
    sources = read_includes(root, [*TOP_ROOMS, "tests", "bench", "fuzz"])
    document = (root / DOCUMENT).read_text()
    if task == "--picture":
        print(draw(sources), end="")
        return 0
    if task == "--renew":
        (root / DOCUMENT).write_text(SHOWN.sub(lambda shown: shown[1] + draw(sources) + shown[3], document))
        return 0
    problems = [*find_problems(sources)]
    shown = SHOWN.search(document)
    if not problems and (not shown or shown[2] != draw(sources)):
        problems = [f"{DOCUMENT}: shows other arrows than there are; renew it with: python3 cmake/check_arrows.py . --renew"]
    print("\n".join(problems), file=sys.stderr, end="\n" if problems else "")
    return 1 if problems else 0


sys.exit(main(pathlib.Path(sys.argv[1]), *sys.argv[2:]))
