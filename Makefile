# make build|demo|test|python-test|bench|lint|clean
#   PYTHON=      the interpreter to build for and to test          (python3)
#   BUILD=       the folder to build in                            (build)
#   BUILD_TYPE=  Release, Debug or another of CMake's build types  (Release)
#   SANITIZE=    address,undefined and the like                    (none)
#   ARGS=        for the benchmarks; ARGS=--help tells which       (none)

PYTHON ?= python3
BUILD ?= build
BUILD_TYPE ?= Release
SANITIZE ?=
ARGS ?=
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

bench:
	@tools/build bench
	@tools/run "$$(tools/environment benchmarks)" benchmarks/bench.py $(ARGS)

lint:
	@tools/lint

clean:
	rm -rf "$(BUILD)"
