# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""finish_module.py NATIVE_PY WRAPPERS_CPP OUT_DIR: what the generator wrote becomes OUT_DIR/native.py, whose classes are handles, and the
stub OUT_DIR/__init__.pyi, from the signatures that the generator tells and the results that the wrappers add. A type that isn't known
here stops it."""

import ast
import pathlib
import re
import sys

HEADER = '''# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
import os
from collections.abc import Iterable, Iterator, Mapping, Sequence
from typing import Any, ClassVar, Union, overload

Text = Union[str, os.PathLike[str]]
Tree = Union[PropertyTree, Mapping[str, Any], Sequence[Any], str, bool, int, float, None]

__version__: str

class PlatformError(Exception): ...
class ClosedError(PlatformError): ...

class Handle:
    def close(self) -> None: ...
    def __enter__(self) -> Any: ...
    def __exit__(self, *unused: Any) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
'''
NUMBER = re.compile(r"(unsigned )?(int|long|short|char)|std::(size_t|u?int\d+_t)")
MODE = re.compile(r"zep(_|::)platform::PlatformLoader::HwMetadataMode")
ADDED = re.compile(r"addOutput\(resultobj, (?:hzep_python::)?(\w+)\(\*arg\d+(?:, SWIGTYPE_p_(\w+))?")
CONVERSIONS = {"mapToPython": "dict[str, str]", "treeToPython": "Any", "toPython": "str", "PyBool_FromLong": "bool"}
# These may have no answer; all other operations that give an object give one.
MAYBE_NONE = re.compile(r"get(?!Global)|find|load")


def split_classes(text):
    """The text in front of the first class, and (name, text) of each."""
    parts = re.split(r"(?m)^(?=class )", text)
    return parts[0], [(re.match(r"class (\w+)", part).group(1), part) for part in parts[1:]]


def finish_native(text):
    head, classes = split_classes(text)
    kept = [head]
    for name, body in classes:
        if re.search(r"Proxy of C\+\+ std::(vector|map|set)<", body):
            body = re.sub(r"(?s)^class .*?swigregister\(\w+\)\n", "", body)
        body = re.sub(r"^class ([A-Z]\w*)\(object\):", r"class \1(Handle):", body)
        body = re.sub(r"(?m)^    (thisown = property|__repr__ = _swig_repr).*\n", "", body)
        kept.append(body)
    return "".join(kept)


class Stub:
    def __init__(self, native, wrappers):
        self.names = {}  # of the C++ class: the Python class, or the type of a container
        self.containers = {}
        _, self.classes = split_classes(native)
        for name, body in self.classes:
            proxied = re.search(r'r"""Proxy of C\+\+ (.*) class\."""', body)
            if proxied:
                self.names[proxied.group(1)] = name
        for cpp, name in list(self.names.items()):
            if cpp.startswith("std::"):
                self.containers[name] = cpp
                del self.names[cpp]
        starts = list(re.finditer(r"(?m)^SWIGINTERN PyObject \*_wrap_(\w+)\(", wrappers))
        ends = [start.start() for start in starts[1:]] + [len(wrappers)]
        self.wrappers = {start.group(1): wrappers[start.start() : end] for start, end in zip(starts, ends)}

    def item(self, cpp):
        cpp = re.sub(r"^const | const$|[*&]", "", cpp.strip()).strip()
        if cpp in ("std::string", "std::string const"):
            return "str"
        return self.names[cpp]

    def container(self, cpp, given):
        kind, items = re.fullmatch(r"std::(\w+)<\s*(.*?)\s*>", cpp).groups()
        if kind == "map":
            return "dict[str, str]"
        item = self.item(items)
        if given:
            return f"Iterable[{'Text' if item == 'str' else item}]"
        return f"{'set' if kind == 'set' else 'list'}[{item}]"

    def type(self, cpp, given=False):
        """Of an argument (given) or a result."""
        cpp = cpp.strip()
        if re.fullmatch(r"std::string( const)?( &)?", cpp):
            return "Text" if given else "str"
        if re.fullmatch(r"bool( &)?", cpp):
            return "bool"
        if NUMBER.fullmatch(cpp) or MODE.fullmatch(cpp):
            return "int"
        if cpp in self.containers:
            return self.container(self.containers[cpp], given)
        if cpp == "PropertyTree":
            return "Tree" if given else "Any"
        if cpp in self.names.values():
            return cpp
        owner, _, enumeration = cpp.rpartition("::")
        if owner in self.names and enumeration[:1].isupper():
            return "int"  # an enumeration
        raise SystemExit(f"finish_module.py: a type that Python has no form for: {cpp}")

    def added_results(self, wrapper):
        found = []
        for conversion, descriptor in ADDED.findall(wrapper):
            if conversion == "listToPython":
                found.append(f"list[{self.item(descriptor.replace('std__string', 'std::string'))}]")
            else:
                found.append(CONVERSIONS[conversion])
        return found

    def signature(self, class_name, name, line, wrapper, static):
        arguments, result = re.fullmatch(r"\w+\((.*)\)(?: -> (.*))?", line).groups()
        told = [] if static else ["self"]
        for i, argument in enumerate(arguments.split(", ") if arguments else []):
            if i == 0 and not static:
                continue
            cpp, _, called = argument.rpartition(" ")
            called, default, _ = called.partition("=")
            told.append(f"{called}: {self.type(cpp, True)}{' = ...' if default else ''}")
        if name == "__init__":
            return f"def __init__({', '.join(told)}) -> None: ..."
        results = [self.type(result)] if result else []
        if result in self.names.values() and MAYBE_NONE.match(name) and not re.search(r"\n    *result = \(.*?\) ?&", wrapper):
            results = [f"{results[0]} | None"]
        if class_name == "PropertyTree" and name == "getChild":
            results = ["PropertyTree"]
        results += self.added_results(wrapper)
        answer = "None" if not results else results[0] if len(results) == 1 else f"tuple[{', '.join(results)}]"
        return f"def {name}({', '.join(told)}) -> {answer}: ..."

    def overloads(self, class_name, function):
        static = any(getattr(mark, "id", "") == "staticmethod" for mark in function.decorator_list)
        key = f"new_{class_name}" if function.name == "__init__" else f"{class_name}_{function.name}"
        lines = (ast.get_docstring(function) or "").split("\n")
        told = {}  # the line of a signature: what differs in `const` alone is told once
        for i, line in enumerate(lines):
            wrapper = self.wrappers.get(f"{key}__SWIG_{i}") or self.wrappers[key]
            signature = self.signature(class_name, function.name, line, wrapper, static)
            given = signature.partition(" -> ")[0]
            if told.setdefault(given, (line, signature)) != (line, signature):
                raise SystemExit(f"finish_module.py: Python can't tell apart: {told[given][0]} and {line}: rename one")
        for _, signature in told.values():
            if len(told) > 1:
                yield "@overload"
            if static:
                yield "@staticmethod"
            yield signature

    def of_class(self, name, body):
        tree = ast.parse(body).body[0]
        base = tree.bases[0].id
        yield ""
        yield f"class {name}({'Handle' if base == 'object' else base}):"
        lines = []
        for member in tree.body:
            if isinstance(member, ast.Assign) and not member.targets[0].id.startswith("_") and member.targets[0].id != "thisown":
                lines.append(f"{member.targets[0].id}: ClassVar[int]")
            elif isinstance(member, ast.FunctionDef) and ast.get_docstring(member):
                lines.extend(self.overloads(name, member))
            elif isinstance(member, ast.FunctionDef) and member.name == "__len__":
                lines.append("def __len__(self) -> int: ...")
            elif isinstance(member, ast.FunctionDef) and member.name == "__iter__":
                lines.append(f"def __iter__(self) -> {'Iterator[tuple[str, PropertyTree]]' if name == 'PropertyTree' else name}: ...")
            elif isinstance(member, ast.FunctionDef) and member.name == "__next__":
                item = re.search(r"(?m)^ +r\"\"\"next\(.*\) -> (.*)\"\"\"", body).group(1)
                lines.append(f"def __next__(self) -> {self.type(item)}: ...")
        yield from ("    " + line for line in lines or ["..."])

    def text(self):
        lines = []
        for name, body in self.classes:
            if name[0] != "_" and name not in self.containers:
                lines.extend(self.of_class(name, body))
        return HEADER + "\n".join(lines) + "\n"


def main():
    native, wrappers = (pathlib.Path(path).read_text(encoding="utf-8") for path in sys.argv[1:3])
    out = pathlib.Path(sys.argv[3])
    (out / "native.py").write_text(finish_native(native), encoding="utf-8")
    (out / "__init__.pyi").write_text(Stub(native, wrappers).text(), encoding="utf-8")


if __name__ == "__main__":
    main()
