"""The X side of a session: real clicks and keys, the window manager's view of windows, pixels."""

import contextlib
import struct
import zlib

from Xlib import X, XK, error, protocol
from Xlib.ext import xtest

_CONTROL_KEYS = {"\n": "Return", "\t": "Tab"}


class Screen:
    """The screen behind the connection to a session's X server."""

    def __init__(self, display):
        self._display = display
        self._root = display.screen().root

    # Input.

    def move_to(self, x, y):
        xtest.fake_input(self._display, X.MotionNotify, x=x, y=y)
        self._display.sync()

    def click(self, x, y, button=1):
        self.move_to(x, y)
        xtest.fake_input(self._display, X.ButtonPress, button)
        xtest.fake_input(self._display, X.ButtonRelease, button)
        self._display.sync()

    def key(self, chord):
        """Presses keys together. They have their X names: "Return", "Control_L+q"."""
        codes = [self._code(XK.string_to_keysym(name)) for name in chord.split("+")]
        self._press([code for code, _ in codes])

    def type(self, text):
        """Types text that the keyboard has keys for."""
        for character in text:
            name = _CONTROL_KEYS.get(character)
            code, shifted = self._code(XK.string_to_keysym(name) if name else ord(character))
            shift = [self._code(XK.XK_Shift_L)[0]] if shifted else []
            self._press(shift + [code])

    def _code(self, symbol):
        for code, index in sorted(self._display.keysym_to_keycodes(symbol), key=lambda key: key[1]):
            if index in (0, 1):
                return code, index == 1
        raise KeyError(f"the keyboard has no key for {symbol:#x}")

    def _press(self, codes):
        for code in codes:
            xtest.fake_input(self._display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self._display, X.KeyRelease, code)
        self._display.sync()

    # Windows.

    def windows(self, process=None):
        """The windows of the window manager, lowest first: (X window, title) of each. With
        `process`, only those of that process id."""
        found = []
        for number in self._property(self._root, "_NET_CLIENT_LIST_STACKING") or ():
            window = self._display.create_resource_object("window", number)
            try:
                owner = self._property(window, "_NET_WM_PID")
                title = self._property(window, "_NET_WM_NAME") or b""
            except error.BadWindow:
                continue
            if process is None or (owner and owner[0] == process):
                found.append((window, bytes(title).decode()))
        return found

    def active_window(self):
        """The number of the X window that has the focus; 0 if none has."""
        active = self._property(self._root, "_NET_ACTIVE_WINDOW")
        # The window manager may report it before it gets the keys.
        focus = self._display.get_input_focus().focus
        return active[0] if active and getattr(focus, "id", focus) == active[0] else 0

    def ask_to_close(self, window):
        """Sends what the window manager sends for its close button, even to a window without
        one."""
        protocols = self._display.intern_atom("WM_PROTOCOLS")
        delete = self._display.intern_atom("WM_DELETE_WINDOW")
        window.send_event(protocol.event.ClientMessage(
            window=window, client_type=protocols, data=(32, [delete, X.CurrentTime, 0, 0, 0])))
        self._display.sync()

    @contextlib.contextmanager
    def covered(self, area):
        """Covers a part of the screen with another window during the context."""
        window = self._root.create_window(*area, 0, X.CopyFromParent, override_redirect=True,
                                          background_pixel=0x808080, event_mask=X.ExposureMask)
        window.map()
        self._display.sync()
        try:
            yield
        finally:
            window.destroy()
            self._display.sync()

    def resize(self, window, width, height):
        """Asks the window manager to resize the window, as a drag of its edge does."""
        window.configure(width=width, height=height)
        self._display.sync()

    def icon_of(self, window):
        """The width, the height and the pixels of a window's icon. Empty if it has none."""
        return list(self._property(window, "_NET_WM_ICON") or ())

    def _property(self, window, name):
        found = window.get_full_property(self._display.intern_atom(name), X.AnyPropertyType)
        return found.value if found else None

    # Pixels.

    def cover(self, colour):
        """Sets the colour behind all windows: (red, green, blue)."""
        red, green, blue = colour
        self._root.change_attributes(background_pixel=red << 16 | green << 8 | blue)
        self._root.clear_area()
        self._display.sync()

    def picture(self, path, area=None):
        """Writes a PNG picture of the screen, or of `area` of it: (x, y, width, height)."""
        whole = self._root.get_geometry()
        x, y, width, height = area or (0, 0, whole.width, whole.height)
        left, top = max(x, 0), max(y, 0)
        width = min(x + width, whole.width) - left
        height = min(y + height, whole.height) - top
        rows = self.rows(left, top, width, height)
        with open(path, "wb") as png:
            png.write(b"\x89PNG\r\n\x1a\n")
            for kind, data in ((b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)),
                               (b"IDAT", zlib.compress(b"".join(b"\0" + row for row in rows), 9)),
                               (b"IEND", b"")):
                png.write(struct.pack(">I", len(data)) + kind + data
                          + struct.pack(">I", zlib.crc32(kind + data)))

    def colours(self, x, y, width, height):
        """The colours of a part of the screen, each (red, green, blue)."""
        return {tuple(row[i:i + 3]) for row in self.rows(x, y, width, height)
                for i in range(0, len(row), 3)}

    def rows(self, x, y, width, height):
        """The rows of a part of the screen, three bytes a point: red, green, blue."""
        # Four bytes a point: blue, green, red, unused.
        raw = self._root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF).data
        rows = []
        for row in range(height):
            line = bytearray(width * 3)
            begin, end = row * width * 4, (row + 1) * width * 4
            line[0::3] = raw[begin + 2:end:4]
            line[1::3] = raw[begin + 1:end:4]
            line[2::3] = raw[begin:end:4]
            rows.append(bytes(line))
        return rows
