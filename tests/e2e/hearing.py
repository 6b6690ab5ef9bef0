"""What a screen reader's user must be told of each window."""

from processes import wait_until

# What the user acts on: it takes the focus, unless it can't be used now.
_ACTED_ON = {"push button", "link", "check box", "radio button", "text", "combo box", "tree",
             "list"}
_READ = {"label", "image", "progress bar", "table column header", "table cell", "list item"}

# What only holds others in the windows of the toolkit, and says nothing.
_HOLDING = {"filler", "scroll bar", "split pane", "frame", "layered pane", "panel", "unknown"}


def _faults_of(node):
    if node.role in _HOLDING:
        return
    if node.role not in _ACTED_ON | _READ:
        yield "of no known role"
    if not node.name.strip():
        yield "without a name"
    states = node.states
    if "enabled" not in states and node.role not in ("push button", "combo box"):
        yield "not enabled"
    if node.role in _ACTED_ON and "enabled" in states and "focusable" not in states:
        yield "takes no focus"
    if node.role == "text" and not states & {"editable", "read-only"}:
        yield "neither to be written in nor only to be read"
    if node.role == "progress bar":
        value, most = node.value or (0, 0)
        if not 0 <= value <= most or most == 0:
            yield f"with the value {node.value}"


def faults_in(window):
    """What is wrong with a window and its controls, a line for each; none in a good one."""
    shown = [node for node in window.below() if "showing" in node.states]
    if not shown:
        return []  # It has gone meanwhile.
    found = [f"{node.role} {node.name!r} {fault}" for node in shown for fault in _faults_of(node)]
    if window.role not in ("frame", "dialog", "alert") or not window.name.strip():
        found.append(f"the window is a {window.role!r} named {window.name!r}")
    radios = [node for node in shown if node.role == "radio button"]
    if radios and sum("checked" in node.states for node in radios) != 1:
        found.append("not one of the radio buttons is set")
    if not any("focused" in node.states for node in shown):
        found.append("nothing has the focus")
    defaults = [node for node in shown if "is-default" in node.states]
    if len(defaults) != 1:
        found.append(f"{len(defaults)} buttons answer to Return")
    return [f"{window.name}: {fault}" for fault in found]


def assert_heard(window, or_else=bool):
    """Waits until nothing is wrong with a window, or until `or_else()` holds."""
    wait_until(lambda: or_else() or not faults_in(window), "a window that is heard", 30,
               lambda: "\n".join([*faults_in(window), window.tree()]))
