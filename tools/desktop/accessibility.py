"""Reads the accessibility bus for PrivateDesktop: a request in JSON on each line of standard input, one answer a line.

A process of its own, since the bus is chosen once in the life of a process.
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

STATES = {
    "active": Atspi.StateType.ACTIVE,
    "checked": Atspi.StateType.CHECKED,
    "enabled": Atspi.StateType.ENABLED,
    "focused": Atspi.StateType.FOCUSED,
    "pressed": Atspi.StateType.PRESSED,
    "selected": Atspi.StateType.SELECTED,
    "showing": Atspi.StateType.SHOWING,
    "visible": Atspi.StateType.VISIBLE,
}
DEEPEST = 30


def children(accessible):
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child is not None:
            yield index, child


def describe(accessible, path, depth=0):
    component = accessible.get_component_iface()
    # The states before the place: what is not shown yet has none, and what has come up in between is then no lie.
    states = accessible.get_state_set()
    place = [0, 0, 0, 0]
    if component is not None:
        extents = component.get_extents(Atspi.CoordType.SCREEN)
        place = [extents.x, extents.y, extents.width, extents.height]
    node = {
        "name": accessible.get_name() or "",
        "description": accessible.get_description() or "",
        "role": accessible.get_role_name(),
        "place": place,
        "states": [name for name, state in STATES.items() if states.contains(state)],
        "path": path,
        "children": [],
    }
    if depth < DEEPEST:
        for index, child in children(accessible):
            try:
                node["children"].append(describe(child, path + [index], depth + 1))
            except GLib.Error:
                pass  # gone while we looked
    return node


def tree(window_title):
    windows = []
    for number, application in children(Atspi.get_desktop(0)):
        try:
            for index, window in children(application):
                if window_title is None or window.get_name() == window_title:
                    windows.append(describe(window, [number, index]))
        except GLib.Error:
            pass
    return windows


def act(path, wanted):
    accessible = Atspi.get_desktop(0)
    for index in path:
        accessible = accessible.get_child_at_index(index)
        if accessible is None:
            return False
    actions = accessible.get_action_iface()
    if actions is None:
        return False
    for index in range(actions.get_n_actions()):
        if Atspi.Action.get_action_name(actions, index) == wanted:
            return bool(actions.do_action(index))
    return False


def answer(request):
    operation = request["operation"]
    if operation == "ready":
        return Atspi.get_desktop(0) is not None
    if operation == "tree":
        return tree(request["window"])
    if operation == "act":
        return act(request["path"], request["action"])
    raise ValueError(operation)


def main():
    Atspi.init()
    # What is remembered would be out of date: nothing here listens for changes.
    Atspi.get_desktop(0).set_cache_mask(Atspi.Cache.NONE)
    Atspi.set_timeout(2000, 5000)
    for line in sys.stdin:
        try:
            result = answer(json.loads(line))
        except GLib.Error:
            result = []  # an application that left meanwhile
        print(json.dumps(result), flush=True)


if __name__ == "__main__":
    main()
