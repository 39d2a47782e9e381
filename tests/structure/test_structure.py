"""What no compiler checks: who includes whom, and which symbols leave the shared objects."""

import os
import re
import subprocess

import pytest
import quarnamultidimarrayforpython

SOURCE = os.path.join(os.path.dirname(__file__), os.pardir, os.pardir, "src")
ROOMS = [room for room in os.listdir(SOURCE) if os.path.isdir(os.path.join(SOURCE, room))]


def read(*path):
    with open(os.path.join(SOURCE, *path)) as file:
        return file.read()


def sources(room):
    return [file for file in os.listdir(os.path.join(SOURCE, room)) if file.endswith((".h", ".cpp"))]


@pytest.mark.parametrize("room", ROOMS)
def test_a_room_includes_the_rooms_that_it_says_it_calls(room):
    calls = re.search(r"\bCALLS\b([^)]*)", read(room, "CMakeLists.txt")).group(1).split()
    included = {path for file in sources(room) for path in re.findall(r'#include "(\w+)/', read(room, file))}
    assert included & set(ROOMS) - {room} == set(calls) & set(ROOMS)


def test_only_data_sees_the_library():
    for room in set(ROOMS) - {"data"}:
        for file in os.listdir(os.path.join(SOURCE, room)):
            assert "quarna_data_array/" not in read(room, file), file


MODULE = os.path.basename(quarnamultidimarrayforpython.__file__)
EXPORTED = {
    "libQuarnaDataArray.so": "get_function_ptr",
    MODULE: "PyInit_quarnamultidimarrayforpython TypeObjectPointers TypeAsChar classid2format format2classid "
    "QCppPyArray::writeToOstream QDArrayWrapper::writeToOstream",
}


@pytest.mark.parametrize("shared_object", EXPORTED)
def test_exported_symbols(shared_object):
    path = os.path.join(os.path.dirname(quarnamultidimarrayforpython.__file__), shared_object)
    table = subprocess.check_output(["nm", "--dynamic", "--demangle", "--defined-only", path]).decode()
    names = {line.split(None, 2)[2].split("(")[0] for line in table.splitlines()}
    assert names == set(EXPORTED[shared_object].split())
