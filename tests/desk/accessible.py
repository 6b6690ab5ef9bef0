"""Windows and controls as a screen reader meets them."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# A machine that is busy makes a program slow to answer, which is not the same as gone.
Atspi.set_timeout(5000, 15000)

_PRESSES = ("press", "click", "toggle", "activate", "jump")


class Node:
    """One window or control. It may go away at any moment: what is asked of it then is None, empty
    or false."""

    def __init__(self, accessible):
        self._accessible = accessible

    def _ask(self, question, lost=None):
        try:
            return question()
        except GLib.Error:
            return lost

    def answers(self):
        """Whether the program has the time to answer."""
        return self._ask(self._accessible.get_child_count, -1) >= 0

    @property
    def process(self):
        """The id of the process that shows it."""
        return self._ask(self._accessible.get_process_id)

    @property
    def name(self):
        return self._ask(self._accessible.get_name) or ""

    @property
    def description(self):
        return self._ask(self._accessible.get_description) or ""

    @property
    def role(self):
        """As AT-SPI words it: "push button", "label", "dialog"."""
        return self._ask(self._accessible.get_role_name) or ""

    @property
    def states(self):
        """The names of the states that hold: "showing", "focused", "checked", "is-default"."""
        found = self._ask(lambda: self._accessible.get_state_set().get_states(), [])
        return {state.value_nick for state in found}

    @property
    def text(self):
        """What a text control holds; the name of any other."""
        def read():
            whole = self._accessible.get_text_iface()
            return Atspi.Text.get_text(whole, 0, -1) if whole else None
        told = self._ask(read)
        return self.name if told is None else told

    def place_of(self, text):
        """The middle of the first letter of `text` in a text control, on the screen; or None."""
        def find():
            whole = self._accessible.get_text_iface()
            letter = Atspi.Text.get_character_extents(whole, self.text.index(text),
                                                      Atspi.CoordType.SCREEN)
            return letter.x + letter.width // 2, letter.y + letter.height // 2
        return self._ask(find)

    @property
    def value(self):
        """(value, largest value) of a progress bar; None of anything else."""
        def read():
            bar = self._accessible.get_value_iface()
            return bar and (Atspi.Value.get_current_value(bar), Atspi.Value.get_maximum_value(bar))
        return self._ask(read)

    @property
    def area(self):
        """(x, y, width, height) on the screen."""
        found = self._ask(lambda: self._accessible.get_extents(Atspi.CoordType.SCREEN))
        return (found.x, found.y, found.width, found.height) if found else None

    def children(self):
        count = self._ask(self._accessible.get_child_count, 0)
        found = (self._ask(lambda i=i: self._accessible.get_child_at_index(i))
                 for i in range(count))
        return [Node(child) for child in found if child]

    def below(self):
        """All controls of this window or control, in the order of the tree."""
        for child in self.children():
            yield child
            yield from child.below()

    def press(self):
        """Asks for the control's action, as a screen reader does. False: it has none."""
        def ask():
            action = self._accessible.get_action_iface()
            for number in range(Atspi.Action.get_n_actions(action) if action else 0):
                if Atspi.Action.get_action_name(action, number).lower() in _PRESSES:
                    return Atspi.Action.do_action(action, number)
            return False
        return self._ask(ask, False)

    def enter(self, text):
        """Gives a text field its text, as a screen reader's user would dictate it."""
        def change():
            field = self._accessible.get_editable_text_iface()
            return bool(field) and Atspi.EditableText.set_text_contents(field, text)
        return self._ask(change, False)

    def focus(self):
        """Gives the control the keyboard focus."""
        return self._ask(lambda: self._accessible.grab_focus(), False)

    def tree(self, depth=0):
        """The controls below, a line for each, for a person to read."""
        held = self.states & {"showing", "focused", "checked", "is-default", "enabled", "modal"}
        told = f"{'  ' * depth}{self.role} {self.name!r} {sorted(held)} {self.area}"
        if self.text != self.name:
            told += f" text {self.text[:200]!r}"
        return "\n".join([told] + [child.tree(depth + 1) for child in self.children()])


def program(process):
    """What the program of that process id shows, or None: the node above its windows."""
    # What has happened is told by events, which wait for this loop.
    while GLib.MainContext.default().iteration(False):
        pass
    desktop = Atspi.get_desktop(0)
    # The library's memory of the tree lags behind the program.
    desktop.set_cache_mask(Atspi.Cache.NONE)
    return next((node for node in Node(desktop).children() if node.process == process), None)
