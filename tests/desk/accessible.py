"""Windows and controls as a screen reader finds them."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# On a busy machine a program answers slowly, which does not mean that it has ended.
Atspi.set_timeout(5000, 15000)

_PRESSES = ("press", "click", "toggle", "activate", "jump")


class Node:
    """One window or control. It may close at any time. Its properties are then None, empty or
    false."""

    def __init__(self, accessible):
        self._accessible = accessible

    def _ask(self, question, lost=None):
        try:
            return question()
        except GLib.Error:
            return lost

    def answers(self):
        """Whether the program answers at present."""
        return self._ask(self._accessible.get_child_count, -1) >= 0

    @property
    def process(self):
        """The id of its process."""
        return self._ask(self._accessible.get_process_id)

    @property
    def name(self):
        return self._ask(self._accessible.get_name) or ""

    @property
    def description(self):
        return self._ask(self._accessible.get_description) or ""

    @property
    def role(self):
        """The AT-SPI name of the role: "push button", "label", "dialog"."""
        return self._ask(self._accessible.get_role_name) or ""

    @property
    def states(self):
        """The names of the current states: "showing", "focused", "checked", "is-default"."""
        found = self._ask(lambda: self._accessible.get_state_set().get_states(), [])
        return {state.value_nick for state in found}

    @property
    def text(self):
        """The content of a text control; the name of any other."""
        def read():
            whole = self._accessible.get_text_iface()
            return Atspi.Text.get_text(whole, 0, -1) if whole else None
        text = self._ask(read)
        return self.name if text is None else text

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
        """Runs the control's action, as a screen reader does. False if it has none."""
        def ask():
            action = self._accessible.get_action_iface()
            for number in range(Atspi.Action.get_n_actions(action) if action else 0):
                if Atspi.Action.get_action_name(action, number).lower() in _PRESSES:
                    return Atspi.Action.do_action(action, number)
            return False
        return self._ask(ask, False)

    def enter(self, text):
        """Sets the text of a text field through the accessibility interface."""
        def change():
            field = self._accessible.get_editable_text_iface()
            return bool(field) and Atspi.EditableText.set_text_contents(field, text)
        return self._ask(change, False)

    def focus(self):
        """Gives the control the keyboard focus."""
        return self._ask(lambda: self._accessible.grab_focus(), False)

    def tree(self, depth=0):
        """A readable list of the controls below, one line each."""
        held = self.states & {"showing", "focused", "checked", "is-default", "enabled", "modal"}
        text = f"{'  ' * depth}{self.role} {self.name!r} {sorted(held)} {self.area}"
        if self.text != self.name:
            text += f" text {self.text[:200]!r}"
        return "\n".join([text] + [child.tree(depth + 1) for child in self.children()])


def program(process):
    """The node above the windows of that process, or None."""
    # Process the pending events of the accessibility bus.
    while GLib.MainContext.default().iteration(False):
        pass
    desktop = Atspi.get_desktop(0)
    # The library's cache of the tree lags behind the program.
    desktop.set_cache_mask(Atspi.Cache.NONE)
    return next((node for node in Node(desktop).children() if node.process == process), None)
