"""Reads the window of kavendra through the accessibility bus, as a screen reader does."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402, F401

SECONDS_TO_WAIT = 10


def descendants(accessible):
    """All widgets below one, except the cells of tables."""
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child is None:
            continue
        yield child
        if child.get_role() != Atspi.Role.TABLE:
            yield from descendants(child)


def windows():
    """The windows of kavendra."""
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application is not None and application.get_name() == "kavendra":
            yield from (application.get_child_at_index(each) for each in range(application.get_child_count()))


def shown(role=None):
    """The visible widgets of the windows, or only of the windows with a role."""
    for window in windows():
        if window is not None and role in (None, window.get_role_name()):
            for each in descendants(window):
                if each.get_state_set().contains(Atspi.StateType.SHOWING):
                    yield each


def named(name):
    """The first visible widget of that name, or None."""
    return next((each for each in shown() if each.get_name() == name), None)


def position(widget, x=0.5, y=0.5):
    """The screen position of a widget, given itself or by name: its centre, or the shares x and y of its width and
    height (above 1: y points below its top). None when there is no such widget."""
    widget = named(widget) if isinstance(widget, str) else widget
    if widget is None:
        return None
    box = widget.get_extents(Atspi.CoordType.SCREEN)
    return int(box.x + box.width * x), int(box.y + (y if y > 1 else box.height * y))


def status():
    """The labels of the status line, joined with " | "; empty when there is no window."""
    line = named("Status")
    return " | ".join(label.get_name() for label in descendants(line)) if line else ""
