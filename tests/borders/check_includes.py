#!/usr/bin/python3
"""Says where an include crosses a border between the rooms of src/, one line for each: file:line: what is wrong.

    check_includes.py [ROOT]

ROOT is the project's directory, which is found from this file if it is not given. The exit status is 1 if there was
anything to say. A new room needs a line in ROOMS.
"""

import os
import re
import sys
from collections import namedtuple

Room = namedtuple("Room", "ours headers")

# What may be included in quotes (a room, or one header of it) and in angle brackets (a kind of KINDS). Every room may
# include itself, and the standard library.
ANYTHING = Room(None, None)
ROOMS = {
    "src/Ports": Room([], []),
    "src/Models": Room(["Ports"], ["json"]),
    "src/Toolkit": Room(["Ports"], ["Qt"]),
    "src/Views": Room(["Models", "Ports", "Toolkit"], ["Qt"]),
    "src/Controllers": Room(["Views", "Models", "Ports", "Toolkit"], ["Qt"]),
    "src/App": ANYTHING,
    "src/Platform/Icu": Room(["Ports"], ["icu"]),
    "src/Platform/Linux": Room(["Ports"], ["system", "other library"]),
    "src/Platform/Qt": Room(["Ports", "Toolkit"], ["Qt", "system"]),
    "src/Platform/Simulated": Room(["Ports", "Platform/Icu"], []),
    "src/Platform/X11": Room(["Ports", "Platform/Linux/ApplicationCatalogue.h", "Platform/Linux/BadgedPrograms.h"],
                             ["X11", "system", "other library"]),
}

# The first one that matches is the header's kind.
KINDS = [
    ("Qt", r"Q\w+(/.*)?"),
    ("X11", r"(xcb|X11)/.*"),
    ("json", r"nlohmann/.*"),
    ("icu", r"unicode/.*"),
    ("system", r"sys/.*|(fcntl|locale|malloc|poll|pwd|unistd)\.h"),
    ("standard", r"[a-z_0-9]+"),
    ("other library", r".*"),
]

OTHER_FOLDERS = ("tests", "bench", "fuzz", "tools")
SUFFIXES = (".h", ".cpp", ".mm", ".m")
INCLUDE = re.compile(r'\s*#\s*(?:include(?:_next)?|import)\s*(?:"(?P<ours>[^"]+)"|<(?P<header>[^>]+)>|(?P<macro>\w+))')
CONDITION = re.compile(r'\s*#.*\b__has_include\s*\(\s*(?:"(?P<ours>[^"]+)"|<(?P<header>[^>]+)>)')


def kind_of(header):
    return next(name for name, pattern in KINDS if re.fullmatch(pattern, header))


def within(included, borders):
    return any(included == border or included.startswith(border + "/") for border in borders)


def room_of(path):
    """The room that a file of src/ belongs to, or None."""
    return next((room for room in ROOMS if path.startswith(room + "/")), None)


def complaint_about_header(room, header):
    kind = kind_of(header)
    if kind != "standard" and ROOMS[room].headers is not None and kind not in ROOMS[room].headers:
        return f"<{header}> ({kind}) does not belong in {room}"
    return None


def complaint_about_ours(root, path, room, included):
    spelled_from_root = room is None and included.startswith("tests/")
    base = root if spelled_from_root else os.path.join(root, "src")
    if ".." in included.split("/") or not os.path.isfile(os.path.join(base, included)):
        return f'"{included}" is not spelled from src/' + ("" if room else " or tests/")
    if room and ROOMS[room].ours is not None and not within(included, [room[len("src/"):], *ROOMS[room].ours]):
        return f'{room} does not include "{included}"'
    return None


def complaints_about_file(root, path):
    room = room_of(path)
    if path.startswith("src/") and room is None:
        yield 1, "belongs to no room that check_includes.py knows"
        return
    with open(os.path.join(root, path), encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            found = INCLUDE.match(line) or CONDITION.match(line)
            if not found:
                continue
            if found["ours"]:
                complaint = complaint_about_ours(root, path, room, found["ours"])
            elif found["header"]:
                complaint = complaint_about_header(room, found["header"]) if room else None
            else:
                complaint = "an include whose name is a macro cannot be checked"
            if complaint:
                yield number, complaint


def sources(root):
    for folder in ("src", *OTHER_FOLDERS):
        for directory, folders, files in os.walk(os.path.join(root, folder)):
            folders.sort()
            for file in sorted(files):
                if file.endswith(SUFFIXES):
                    yield os.path.relpath(os.path.join(directory, file), root)


def main(arguments):
    root = arguments[0] if arguments else os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
    files = list(sources(root))
    complaints = [f"{path}:{number}: {text}" for path in files for number, text in complaints_about_file(root, path)]
    print("\n".join(complaints) if complaints else f"{len(files)} files, every include stays within its border")
    return 1 if complaints or not files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
