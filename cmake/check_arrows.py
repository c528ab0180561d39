#!/usr/bin/env python3
"""Fails when an include runs against the arrows between the rooms, or when files include each other in a circle.

usage: check_arrows.py ROOT
"""
import pathlib
import re
import sys

MAY_INCLUDE = {
    "platform": {"platform"},
    "kit": {"kit", "platform"},
    "bundle": {"bundle", "kit", "platform"},
    "linux": {"linux", "platform"},
    "host": {"host", "linux", "kit", "platform"},
}
# Headers that the portable rooms may use besides the standard library; the threads' one is for their names.
PORTABLE = re.compile(r"fmt/|pugixml\.hpp$|pthread\.h$")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)


def room_problems(name, system, target):
    room = name.split("/")[0]
    if not system:
        allowed = any(target.startswith(prefix + "/") for prefix in MAY_INCLUDE[room])
        return [] if allowed else [f"{name}: {room}/ must not include {target}"]
    if room in ("platform", "kit", "bundle") and ("/" in target or "." in target) and not PORTABLE.match(target):
        return [f"{name}: {room}/ is portable and must not include <{target}>"]
    return []


def find_circle(graph):
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for target in graph.get(node, ()):
            circle = visit(target)
            if circle:
                return circle
        path.pop()
        done.add(node)
        return None

    for start in graph:
        circle = visit(start)
        if circle:
            return circle
    return None


def main():
    root = pathlib.Path(sys.argv[1])
    graph, problems = {}, []
    for room in MAY_INCLUDE:
        for path in sorted((root / room).rglob("*.[ch]pp")):
            name = path.relative_to(root).as_posix()
            includes = [(mark == "<", target) for mark, target in INCLUDE.findall(path.read_text())]
            graph[name] = [target for system, target in includes if not system]
            for system, target in includes:
                problems += room_problems(name, system, target)
    circle = find_circle(graph)
    if circle:
        problems.append("these include each other in a circle: " + " -> ".join(circle))
    print("\n".join(problems), file=sys.stderr, end="\n" if problems else "")
    return 1 if problems else 0


sys.exit(main())
