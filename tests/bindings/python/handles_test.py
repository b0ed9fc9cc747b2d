# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""Handles: how long objects live, which are the same, what comes back."""

import copy
import gc
import os
import pathlib
import pickle
import sys
import unittest
import weakref

from hzep_platform import *

EXAMPLES = pathlib.Path(sys.argv[1])
FILE = EXAMPLES / "kestrel" / "kestrel.zpfm"


def load():
    return PlatformLoader(FILE).load()


class LifetimeTest(unittest.TestCase):
    def test_a_part_keeps_what_it_came_from(self):
        device = load().getHardwarePlatform().getDevice("fpga0")
        configs = load().getSoftwarePlatform().getSystemConfigs()
        clock = next(load().getHardwarePlatform().createSystemClockIter())
        gc.collect()
        self.assertTrue(device.getName() and configs[0].getName() and clock.getName())

    def test_what_nobody_holds_is_freed(self):
        loader = PlatformLoader(FILE)
        ends = [weakref.ref(loader), weakref.ref(loader.load()), weakref.ref(loader.load().getHardwarePlatform())]
        del loader
        gc.collect()
        self.assertEqual([None] * 3, [end() for end in ends])

    def test_many_loads_take_no_more_memory(self):
        def pages():
            return int(pathlib.Path("/proc/self/statm").read_text().split()[1])

        for _ in range(10):
            load().getHardwarePlatform().getName()
        before = pages()
        for _ in range(60):
            load().getHardwarePlatform().getName()
        self.assertLess((pages() - before) * os.sysconf("SC_PAGE_SIZE"), 6 << 20)

    def test_closing_an_owner_closes_the_parts(self):
        with PlatformLoader(FILE) as loader:
            platform = loader.load()
            hardware = platform.getHardwarePlatform()
            device = hardware.getDevices()[0]
            clocks = hardware.createSystemClockIter()
            config = platform.getSoftwarePlatform().getSystemConfigs()[0]
        for part in (loader, platform, hardware, device, config):
            with self.assertRaises(ClosedError):
                part.getName()
            self.assertEqual(f"<{type(part).__name__} closed>", repr(part))
            part.close()
        with self.assertRaises(ClosedError):
            next(clocks)

    def test_what_the_manager_drops_is_closed(self):
        manager = ZEPPlatformMgr()
        manager.addPlatformsFromDirs([EXAMPLES / "kestrel"])
        [platform] = manager.getPlatforms()
        hardware = platform.getHardwarePlatform()
        manager.clearAllPlatforms()
        for part in (platform, hardware):
            with self.assertRaises(ClosedError):
                part.getName()
        with self.assertRaises(ClosedError):
            ZEPPlatformUtils.filterOutOldPlatforms([platform])

    def test_taking_over(self):
        platform, hardware = ZEPPlatform(), ZEPHardwarePlatform.create()
        platform.setHardwarePlatform(hardware)
        with self.assertRaises(ValueError):
            platform.setHardwareEmulationPlatform(hardware)
        del platform
        gc.collect()
        hardware.setName("still there")
        self.assertEqual("still there", hardware.getName())
        refused = ZEPSoftwarePlatform()
        with self.assertRaises(TypeError):
            ZEPPlatform().addSoftwarePlatform(ZEPSystemConfig())
        ZEPPlatform().addSoftwarePlatform(refused)


class IdentityTest(unittest.TestCase):
    def test_one_hardware_platform_is_one_object(self):
        platform = load()
        hardware = platform.getHardwarePlatform()
        hardware.note = "mine"
        self.assertIs(hardware, platform.getHardwarePlatform())
        address = id(hardware)
        del hardware
        gc.collect()
        again = platform.getHardwarePlatform()
        self.assertFalse(hasattr(again, "note"), address)
        again.close()
        self.assertIsNot(again, platform.getHardwarePlatform())
        self.assertTrue(platform.getHardwarePlatform().getName())

    def test_new_platforms_at_old_addresses_have_objects_of_their_own(self):
        handles = []
        for i in range(50):
            with ZEPPlatform() as platform:
                platform.setHardwarePlatform(ZEPHardwarePlatform.create())
                handles.append(platform.getHardwarePlatform())
                handles[-1].setName(str(i))
                self.assertEqual(str(i), platform.getHardwarePlatform().getName())
        for handle in handles:
            with self.assertRaises(ClosedError):
                handle.getName()

    def test_equality(self):
        platform = load()
        one, other = (platform.getSoftwarePlatform() for _ in range(2))
        self.assertIsNot(one, other)
        self.assertEqual(one, other)
        self.assertEqual({one}, {other})
        self.assertNotEqual(one, platform)
        known = {one}
        one.close()
        self.assertNotEqual(one, other)
        self.assertIn(one, known)

    def test_handles_are_no_values(self):
        for act in (copy.copy, copy.deepcopy, pickle.dumps):
            with self.assertRaises(TypeError):
                act(ZEPPlatform())
        self.assertFalse(hasattr(ZEPPlatform, "thisown"))


class ValueTest(unittest.TestCase):
    def test_repr(self):
        platform = ZEPPlatform()
        self.assertEqual("<ZEPPlatform>", repr(platform))
        platform.setName("mine")
        platform.setPlatformFile("/plat/mine.zpfm")
        self.assertEqual("<ZEPPlatform 'mine' '/plat/mine.zpfm'>", repr(platform))
        self.assertIn(str(FILE), repr(PlatformLoader(FILE)))

    def test_results_are_plain_values(self):
        hardware = load().getHardwarePlatform()
        count, types = hardware.getUniqueMemoryTypeStrings()
        self.assertEqual((int, list, count), (type(count), type(types), len(types)))
        names, frequencies = hardware.getAllClockFrequencies()
        self.assertEqual(len(names), len(frequencies))
        self.assertEqual((hardware.getFeatureRoms(), ""), (hardware.getFeatureRomVecRange(), hardware.issueNormalizeMemoryBanksMessage()))
        self.assertIs(set, type(NativeKeyService().get(FILE)))
        self.assertEqual({"name": load().getName()}, NativeDictService().getFilteredDict(FILE, "", ["name"]))
        self.assertEqual([clock.getName() for clock in hardware.getSystemClocks()],
                         [clock.getName() for clock in hardware.createSystemClockIter()])

    def test_namesakes(self):
        """What C++ tells apart by the type of a list to be filled, or of an enumeration."""
        config = load().getSoftwarePlatform().getSystemConfigs()[0]
        self.assertEqual([group.getName() for group in config.getProcessorGroups()], config.getProcessorGroupNames())
        self.assertEqual("PRE_INIT_TCL", ZEPPfmFileTypes.tclTypeToString(ZEPPfmFileTypes.toTclFileType("PRE_INIT_TCL"))[-12:])

    def test_trees(self):
        objects = NativeObjectService()
        tree = objects.getAsPropertyTree(FILE)
        self.assertEqual(load().getName(), objects.getStringValue(tree, "name"))
        given = {"a": [1, True, None, {"b": "ü"}, []], "c": {"d": 1.5}, "e": PropertyTree('{"f": "g"}')}
        self.assertEqual(["1", "true", "null", {"b": "ü"}, ""], objects.getChild(given, "a"))
        self.assertEqual({"f": "g"}, objects.getChild(given, "e"))
        tree = PropertyTree('{"x": {"y": "1"}, "z": "2"}')
        self.assertEqual((2, ["x", "z"]), (len(tree), [key for key, _ in tree]))

    def test_text(self):
        platform = ZEPPlatform()
        for text in ("", "a\0b", "Grüße 😀", "\udcff"):  # the last one is a byte of a path that is no UTF-8
            platform.setName(text)
            self.assertEqual(text, platform.getName())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
