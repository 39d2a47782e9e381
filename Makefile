# make build|demo|test|python-test|bench|lint|clean
#   PYTHON=      the interpreter to build for and to test          (python3)
#   BUILD=       the folder to build in                            (build)
#   BUILD_TYPE=  Release, Debug or another of CMake's build types  (Release)
#   SANITIZE=    address,undefined and the like                    (none)

PYTHON ?= python3
BUILD ?= build
BUILD_TYPE ?= Release
SANITIZE ?=
MAKEFLAGS += --no-print-directory
export PYTHON BUILD BUILD_TYPE SANITIZE

.PHONY: build demo test python-test bench lint clean

build:
	@tools/build

demo: build
	@tools/run "$(PYTHON)" examples/tour.py

test:
	@tools/test

python-test:
	@tools/test python

bench: build
	@tools/run "$$(tools/environment)" benchmarks/bench.py
	@tools/run "$$(tools/environment)" benchmarks/memory.py

lint:
	@tools/lint

clean:
	rm -rf "$(BUILD)"
