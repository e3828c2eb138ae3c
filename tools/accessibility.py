"""What the window of kavendra shows, through the accessibility bus, as a screen reader would read it."""

import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

SECONDS_TO_WAIT = 10


def descendants(accessible):
    """All below an accessible but the cells of tables."""
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
    """All that is on the screen below the windows, or only below those of a role."""
    for window in windows():
        if window is not None and role in (None, window.get_role_name()):
            for each in descendants(window):
                if each.get_state_set().contains(Atspi.StateType.SHOWING):
                    yield each


def named(name):
    """The first thing of that name that is on the screen, None when there is none."""
    return next((each for each in shown() if each.get_name() == name), None)


def wait_and_print(answer):
    """Prints the first answer there is; ends with 1 when there is none within ten seconds."""
    deadline = time.monotonic() + SECONDS_TO_WAIT
    while time.monotonic() < deadline:
        text = answer()
        if text:
            print(text)
            sys.exit(0)
        time.sleep(0.1)
    sys.exit("nothing found on the accessibility bus")
