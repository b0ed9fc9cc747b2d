#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# wheel_test.sh PYTHON DIST VENV EXAMPLES: the only wheel in DIST, unpacked where a fresh environment looks for packages, works without the
# build tree.
set -euo pipefail
python=$1 dist=$2 venv=$3 examples=$4
rm -rf "$venv"
"$python" -m venv --without-pip "$venv"
site=$("$venv/bin/python" -c 'import sysconfig; print(sysconfig.get_path("platlib"))')
"$python" -m pip install --quiet --no-index --no-deps --target "$site" "$dist"/*.whl
cd /
env -u PYTHONPATH -u LD_LIBRARY_PATH "$venv/bin/python" - "$venv" "$examples" <<'EOF'
import pathlib
import sys

import hzep_platform

folder = pathlib.Path(hzep_platform.__file__).parent
assert folder.is_relative_to(sys.argv[1]), folder
assert hzep_platform.__version__ != "0"
for file in ("py.typed", "__init__.pyi"):
    assert (folder / file).exists(), file
maps = pathlib.Path("/proc/self/maps").read_text()
assert str(folder / "libhzep_platform.so") in maps, "another library is loaded"
with hzep_platform.PlatformLoader(sys.argv[2] + "/kestrel/kestrel.zpfm") as loader:
    assert loader.load().getName().startswith("kestrel")
EOF
