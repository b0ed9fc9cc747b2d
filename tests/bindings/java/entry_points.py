# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""entry_points.py TABLE NM LIBRARY SOURCE: compares the library's entry points with the table and with the public headers. Fails for a class
that is missing or has fewer than the table says, for an operation of a wrapped class that Java can't call and the table doesn't name,
for one that the table names without need, and for entry points of another form."""

import pathlib
import re
import subprocess
import sys

PREFIX = "Java_ui_data_platform_platform_"


def operations(header):
    """(class, operation) of all public operations that a header declares."""
    text = re.sub(r"//.*|^ *#.*|\[\[\w+\]\]", "", header.read_text(encoding="utf-8"), flags=re.M)
    for found in re.finditer(r"(?ms)^class HZEP_EXPORT (\w+)[^;{]*\{(.*?)^\};", text):
        body = found.group(2)
        for nested in (r"\{[^{}]*\}", r"<[^<>;]*>"):
            while (less := re.sub(nested, "; " if nested[1] == "{" else " ", body)) != body:
                body = less
        public = re.sub(r"(?s)(private|protected):.*?(public:|\Z)", "", body)
        for declaration in re.split(r"[;}]|  +(?=\w)|public:", public):
            called = re.search(r"(\w+)\s*\(", declaration)
            if called and not re.search(r"operator|= delete|\b(using|friend)\b|~", declaration) and called.group(1) != found.group(1):
                yield found.group(1), called.group(1)


def main():
    table, nm, library, source = sys.argv[1:]
    symbols = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    names = set(re.findall(r" T (.*)", symbols)) - {"JNI_OnLoad"}
    faults = [f"not an entry point: {name}" for name in names if not name.startswith(PREFIX)]
    names = {name[len(PREFIX):] for name in names}
    counts, here = {}, set()
    for name in names:
        owner, operation = re.fullmatch(r"(?:(?:new|delete)_1)?([^_]+)(?:_1(.*?))?(?:_1_1SWIG_1\d+)?", name).groups()
        counts[owner] = counts.get(owner, 0) + 1
        here.add((owner, (operation or "").replace("_1", "_")))

    renamed, wrapped = {}, set()
    for interface in pathlib.Path(source, "jni").glob("*.i"):
        renamed.update((cpp, java) for java, cpp in re.findall(r"%rename\((\w+)\) (\w+);", interface.read_text(encoding="utf-8")))
    for header in sorted([*pathlib.Path(source, "include").glob("*.h"), *pathlib.Path(source, "services").glob("*.h")]):
        wrapped.update((renamed.get(cpp, cpp), operation) for cpp, operation in operations(header))
    missing = {f"{owner}.{operation}" for owner, operation in wrapped - here if owner in counts}

    known, left_out = {}, set()
    for line in pathlib.Path(table).read_text(encoding="utf-8").splitlines()[1:]:
        first, *words = line.partition(":")[0].split()
        known.update((name, int(first)) for name in words if first.isdigit())
        left_out.update(f"{first}.{operation}" for operation in words if not first.isdigit())
    faults += [f"Java can't call {name}" for name in sorted(missing - left_out)]
    faults += [f"named in the table, but Java can call it: {name}" for name in sorted(left_out - missing)]
    faults += [f"{name}: {counts.get(name, 0)} of {number}" for name, number in known.items() if counts.get(name, 0) < number]
    print(f"{len(names)} entry points of {len(counts)} classes, {len(wrapped)} public operations, {len(missing)} left out", *faults, sep="\n")
    sys.exit(bool(faults))


main()
