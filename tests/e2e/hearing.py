"""What a screen reader must find in each window."""

from processes import wait_until

# Controls for input. They take the focus unless they are disabled.
_ACTED_ON = {"push button", "link", "check box", "radio button", "text", "combo box", "tree",
             "list"}
_READ = {"label", "image", "progress bar", "table column header", "table cell", "list item"}

# Containers of the toolkit, which have no text.
_HOLDING = {"filler", "scroll bar", "split pane", "frame", "layered pane", "panel", "unknown"}


def _faults_of(node):
    if node.role in _HOLDING:
        return
    if node.role not in _ACTED_ON | _READ:
        yield "has an unknown role"
    if not node.name.strip():
        yield "has no name"
    states = node.states
    if "enabled" not in states and node.role not in ("push button", "combo box"):
        yield "is disabled"
    if node.role in _ACTED_ON and "enabled" in states and "focusable" not in states:
        yield "takes no focus"
    if node.role == "text" and not states & {"editable", "read-only"}:
        yield "is neither editable nor read-only"
    if node.role == "progress bar":
        value, most = node.value or (0, 0)
        if not 0 <= value <= most or most == 0:
            yield f"has the value {node.value}"


def faults_in(window):
    """The faults of a window and its controls, one line each."""
    shown = [node for node in window.below() if "showing" in node.states]
    if not shown:
        return []  # It has been closed meanwhile.
    found = [f"{node.role} {node.name!r} {fault}" for node in shown for fault in _faults_of(node)]
    if window.role not in ("frame", "dialog", "alert") or not window.name.strip():
        found.append(f"the window is a {window.role!r} named {window.name!r}")
    radios = [node for node in shown if node.role == "radio button"]
    if radios and sum("checked" in node.states for node in radios) != 1:
        found.append("the number of selected radio buttons is not one")
    if not any("focused" in node.states for node in shown):
        found.append("nothing has the focus")
    defaults = [node for node in shown if "is-default" in node.states]
    if len(defaults) != 1:
        found.append(f"{len(defaults)} default buttons")
    return [f"{window.name}: {fault}" for fault in found]


def assert_heard(window, or_else=bool):
    """Waits until a window has no faults, or until `or_else()` is true."""
    wait_until(lambda: or_else() or not faults_in(window), "a window without faults", 30,
               lambda: "\n".join([*faults_in(window), window.tree()]))
