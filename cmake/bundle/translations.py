"""The toolkit's words in the user's language, of which only the folder dialog shows any."""

import os
import subprocess
import tempfile
import xml.etree.ElementTree as xml

# What the dialog and its menus say, and whether a language is written from the right.
_CONTEXTS = {"QAbstractFileIconProvider", "QDialogButtonBox", "QFileDialog", "QFileSystemModel",
             "QGuiApplication", "QLineEdit", "QPlatformTheme", "QScrollBar"}


def make(original, to, tools):
    """Writes the part of the translation `original` that the dialog shows to `to`. `tools`: the
    folder with the toolkit's own programs for translations."""
    with tempfile.TemporaryDirectory() as scratch:
        texts = os.path.join(scratch, "texts.ts")
        subprocess.run([os.path.join(tools, "lconvert"), "-i", original, "-o", texts], check=True)
        tree = xml.parse(texts)
        for context in tree.getroot().findall("context"):
            if context.findtext("name") not in _CONTEXTS:
                tree.getroot().remove(context)
        tree.write(texts, encoding="utf-8", xml_declaration=True)
        subprocess.run([os.path.join(tools, "lrelease"), "-silent", texts, "-qm", to], check=True)
