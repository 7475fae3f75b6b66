"""What the shared library shows: exactly the recorded names of its own, and beside them only
weak symbols of Boost and the standard library.

    exported_symbols.py LIBRARY RECORD [--record]
"""

import re
import subprocess
import sys

STRINGS = re.compile(
    r"std::(?:__cxx11::)?basic_string<(\w+), std::char_traits<\1>, std::allocator<\1> >")
FOREIGN = re.compile(r"^(?:(?:vtable|VTT|typeinfo|typeinfo name|construction vtable|guard variable|"
                     r"virtual thunk|non-virtual thunk|virtual thunk to|non-virtual thunk to)"
                     r"(?: for| to)? )*[\w:<>*&, ()]*?(?:boost|std|__gnu_cxx)::")


def shown_by(library):
    listing = subprocess.run(["nm", "-DC", "--defined-only", library], check=True,
                             capture_output=True, text=True).stdout
    for line in listing.splitlines():
        kind, name = line.split(maxsplit=2)[1:]
        yield kind, STRINGS.sub(r"std::basic_string<\1>", name)


def main(library, record, *options):
    symbols = set(shown_by(library))
    ours = {name for _, name in symbols
            if re.match(r"(?:\w+ )*(?:for )?nura::filesystem::", name)}
    if options == ("--record",):
        with open(record, "w", encoding="utf-8") as file:
            file.writelines(f"{name}\n" for name in sorted(ours))
        return 0
    with open(record, encoding="utf-8") as file:
        expected = set(file.read().splitlines())
    strangers = {name for kind, name in symbols
                 if name not in ours and not (kind in "WVu" and FOREIGN.match(name))}
    for title, names in (("not recorded", ours - expected), ("missing", expected - ours),
                         ("neither ours nor weak", strangers)):
        for name in sorted(names):
            print(f"{title}: {name}")
    return int(ours != expected or bool(strangers))


sys.exit(main(*sys.argv[1:]))
