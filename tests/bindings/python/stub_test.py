# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""The type stub tells what the module has, and nothing else."""

import ast
import inspect
import pathlib
import sys
import unittest

import hzep_platform

STUB = ast.parse((pathlib.Path(hzep_platform.__file__).parent / "__init__.pyi").read_text(encoding="utf-8"))
CLASSES = {node.name: node for node in STUB.body if isinstance(node, ast.ClassDef)}


def public(names):
    return {name for name in names if not name.startswith("_")}


class StubTest(unittest.TestCase):
    def test_classes(self):
        self.assertEqual(set(hzep_platform.__all__), set(CLASSES))

    def test_members(self):
        for name, node in CLASSES.items():
            told = {member.name if isinstance(member, ast.FunctionDef) else member.target.id
                    for member in node.body if isinstance(member, (ast.FunctionDef, ast.AnnAssign))}
            with self.subTest(name):
                self.assertEqual(public(told), public(vars(getattr(hzep_platform, name))))
                self.assertEqual([base.id for base in node.bases],
                                 [base.__name__ for base in getattr(hzep_platform, name).__bases__ if base is not object])

    def test_kinds_and_counts_of_arguments(self):
        for name, node in CLASSES.items():
            for member in node.body:
                if not isinstance(member, ast.FunctionDef) or member.name[0] == "_":
                    continue
                found = inspect.getattr_static(getattr(hzep_platform, name), member.name)
                marks = {mark.id for mark in member.decorator_list}
                with self.subTest(f"{name}.{member.name}"):
                    self.assertEqual("staticmethod" in marks, isinstance(found, staticmethod))
                    parameters = inspect.signature(getattr(hzep_platform, name).__dict__[member.name]).parameters
                    if "args" not in parameters:
                        self.assertEqual([argument.arg for argument in member.args.args], list(parameters))

    def test_results(self):
        """A few kinds of results, by hand."""
        told = {f"{name}.{member.name}": ast.unparse(member.returns)
                for name, node in CLASSES.items() for member in node.body if isinstance(member, ast.FunctionDef)}
        for name, result in {
            "ZEPPlatformMgr.getPlatforms": "list[ZEPPlatform]",
            "ZEPPlatform.getHardwarePlatform": "ZEPHardwarePlatform | None",
            "ZEPHardwarePlatform.getAllClockFrequencies": "tuple[list[str], list[str]]",
            "NativeCatalogService.canDsaBeOpened": "tuple[bool, str]",
            "NativeKeyService.get": "set[str]",
            "PropertyTree.getChild": "PropertyTree",
            "ZEPPlatformIter.__next__": "ZEPPlatform",
        }.items():
            self.assertEqual(result, told[name], name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
