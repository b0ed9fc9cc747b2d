# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""A thousand and more calls that no program should make: each ends in an exception of the right kind, and the process goes on."""

import inspect
import itertools
import pathlib
import sys
import unittest

import hzep_platform
from hzep_platform import *

EXAMPLES, DATA = (pathlib.Path(argument) for argument in sys.argv[1:3])
FILE = EXAMPLES / "kestrel" / "kestrel.zpfm"
LONE = "\ud800"  # half of a character: UTF-8 has no form for it
CLASSES = [cls for cls in (getattr(hzep_platform, name) for name in hzep_platform.__all__) if issubclass(cls, Handle) and cls is not Handle]


def operations(cls):
    """The instance's operations that the class has from the library."""
    for name, member in inspect.getmembers(cls, inspect.isfunction):
        if not name.startswith("_") and name != "close" and not isinstance(inspect.getattr_static(cls, name), staticmethod):
            yield name, member


def closed(cls):
    """A closed handle of a class."""
    try:
        handle = cls()
    except (TypeError, AttributeError):
        return None
    handle.close()
    return handle


class MisuseTest(unittest.TestCase):
    calls = 0

    def refused(self, kinds, act, *arguments, told=""):
        MisuseTest.calls += 1
        try:
            answer = act(*arguments)
        except kinds:
            return
        except BaseException as error:
            self.fail(f"{told or act}{arguments}: {error!r}")
        self.fail(f"{told or act}{arguments} answers {answer!r}")

    @classmethod
    def tearDownClass(cls):
        print(f"{cls.calls} calls refused")
        assert cls.calls >= 1000, cls.calls

    def test_nothing_as_the_object(self):
        for cls in CLASSES:
            for name, operation in operations(cls):
                count = len([p for p in inspect.signature(operation).parameters.values() if p.kind == p.POSITIONAL_OR_KEYWORD])
                for nothing in (None, 5):
                    self.refused(TypeError, operation, nothing, *[""] * (count - 1), told=f"{cls.__name__}.{name}")

    def test_closed_handles(self):
        for cls in CLASSES:
            handle = closed(cls)
            for name, operation in operations(cls) if handle is not None else ():
                parameters = inspect.signature(operation).parameters
                if len(parameters) == 1:
                    self.refused(ClosedError, operation, handle, told=f"{cls.__name__}.{name}")

    def test_wrong_types(self):
        """Every operation with an argument, told objects that are of no type that it takes."""
        platform = ZEPPlatform()
        for cls in (ZEPPlatform, ZEPSoftwarePlatform, ZEPSystemConfig, ZEPPlatformMgr, ZEPBootImg, ZEPProcessorGroup, ZEPSystemClock,
                    NativeObjectService, NativeCatalogService, HMDAArchive, HZEPSemanticLabelReader):
            for name, operation in operations(cls):
                parameters = inspect.signature(operation).parameters
                if "args" in parameters or len(parameters) == 1:
                    continue
                for wrong in (object(), b"bytes", lambda: 0, [object()], {1: 2}, Handle, LONE):
                    arguments = [wrong] * (len(parameters) - 1)
                    self.refused((TypeError, UnicodeEncodeError), operation, cls(), *arguments, told=f"{cls.__name__}.{name}")
        self.refused(TypeError, platform.getName, 1)
        self.refused(TypeError, platform.setName)
        for number in (1 << 80, -1, 1 << 32):
            self.refused(OverflowError, platform.setDefaultRPId, number)
        self.refused(TypeError, platform.setName, None)
        self.refused(TypeError, platform.addSoftwarePlatform, None)
        self.refused(TypeError, ZEPPlatformMgr().addPlatformsFromDirs, "a text is no list")
        self.refused(TypeError, ZEPPlatformMgr().removePlatformsFromDirs, [None])
        self.refused(TypeError, PlatformLoader, FILE, 7)
        self.refused(TypeError, NativeObjectService().getChild, {1: 2}, "a")

    def test_text_and_trees_of_no_use(self):
        class Odd(int):
            __str__ = lambda self: LONE
            __bool__ = lambda self: {}["from within"]

        objects, documents, closed = NativeObjectService(), NativeDocService(), PropertyTree("{}")
        closed.close()
        for tree in (LONE, [LONE], (1, {"a": LONE}), {LONE: 1}, {pathlib.Path(LONE): 1}, Odd()):
            for take in (objects.getStringValue, documents.isValidDocKey, documents.getBranch):
                self.refused(UnicodeEncodeError, take, tree, "a", *[True] * (take == documents.getBranch))
        for tree in (closed, [closed], {"a": closed}):
            for take in (objects.getStringValue, objects.hasNodeAtPath, documents.isValidDocKey):
                self.refused(ClosedError, take, tree, "a")
        for take, *given in ((PlatformLoader, LONE), (PlatformLoader, pathlib.Path(LONE)), (PropertyTree, LONE), (objects.hasNodeAtPath, {}, LONE),
                             (NativeCatalogService().canDsaBeOpened, FILE, LONE), (ZEPPlatformMgr().removePlatformsFromDirs, [LONE]),
                             (NativeDictService().getFilteredDict, FILE, "", {LONE}), (documents.isValidDocKey, {}, LONE)):
            self.refused(UnicodeEncodeError, take, *given)
        self.refused(KeyError, documents.getBranch, {}, "a", Odd())

    def test_indexes(self):
        hardware = PlatformLoader(FILE).load().getHardwarePlatform()
        tree = PropertyTree('{"a": "1"}')
        for index in (-1, 1, 2147483647, -2147483648):
            self.refused(IndexError, tree.getChild, index)
            self.refused(IndexError, tree.getKey, index)
        self.refused(OverflowError, tree.getChild, 1 << 40)
        clocks = hardware.createSystemClockIter()
        self.assertTrue(list(clocks))
        self.refused(IndexError, clocks.next)
        self.refused(StopIteration, next, clocks)

    def test_deep_and_endless_trees(self):
        deep = []
        for _ in range(100000):
            deep = [deep]
        endless = {}
        endless["again"] = endless
        for tree in (deep, endless):
            self.refused(RecursionError, NativeObjectService().getStringValue, tree, "a")
        def failing():
            yield "a"
            raise KeyError("from within")
        self.refused(KeyError, ZEPPlatformMgr().removePlatformsFromDirs, failing())

    def test_broken_files(self):
        for file in itertools.chain(DATA.iterdir(), ["/nowhere/at-all.zpfm", "", "/", "a\0b"]):
            for load in (lambda: PlatformLoader(file).load(), lambda: PlatformLoader(file, HwMetadataModes.xmlOnly()).load()):
                try:
                    self.assertIn(type(load()), (ZEPPlatform, type(None)))
                except PlatformError as error:
                    self.assertTrue(str(error))
        for text in ("", "{", "[1", '{"a": }', "nonsense"):
            self.refused(PlatformError, PropertyTree, text)
        self.refused(PlatformError, PlatformLoader, "/nowhere/at-all.zpfm")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
