#!/usr/bin/env python3
"""Writes records into an app-group container's shared store as the phone app
does: each record's JSON stored as data in the binary property list, the file
replaced by rename so a reader never sees half a file.

    write_records.py CONTAINER KEY=JSON [KEY=JSON ...]
"""
import os
import plistlib
import sys
import tempfile


def main(argv):
    if len(argv) < 3 or any("=" not in pair for pair in argv[2:]):
        print(__doc__.strip(), file=sys.stderr)
        return 2
    folder = os.path.join(argv[1], "Library", "Preferences")
    os.makedirs(folder, exist_ok=True)
    path = os.path.join(folder, "group.com.qrv.widgets.plist")
    contents = {}
    if os.path.exists(path):
        with open(path, "rb") as existing:
            contents = plistlib.load(existing)
    for pair in argv[2:]:
        key, json_text = pair.split("=", 1)
        contents[key] = json_text.encode("utf-8")
    handle, temporary = tempfile.mkstemp(dir=folder, prefix=".records-")
    with os.fdopen(handle, "wb") as out:
        plistlib.dump(contents, out, fmt=plistlib.FMT_BINARY)
    os.replace(temporary, path)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
