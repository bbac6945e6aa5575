# Convenience entry points over CMake. Outputs go to build/, programs to build/bin/.
BUILD ?= build
CMAKE_FLAGS ?=
JOBS ?= $(shell nproc)

.PHONY: all setup configure build program test sample bench bench-compare asan clean

all: build

setup:
	bash scripts/setup

configure:
	cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The floorxport program alone, without the tests and benchmarks.
program: configure
	cmake --build $(BUILD) -j $(JOBS) --target floorxport

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

sample: program
	bash scripts/run-sample

bench: build
	bash scripts/run-bench

# Ours against GDAL and LibreOffice (scripts/setup-peers installs them). Only the
# markdown report goes to standard output; BENCH_COMPARE_ARGS takes its options.
bench-compare:
	@cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS) >&2
	@cmake --build $(BUILD) -j $(JOBS) --target floorxport floorgen >&2
	@/usr/bin/python3 scripts/bench-compare --build $(BUILD) $(BENCH_COMPARE_ARGS)

# Address and undefined-behaviour sanitizers, in their own build tree.
asan:
	$(MAKE) test BUILD=build-asan CMAKE_FLAGS="-DFX_SANITIZE=ON -DFX_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug"

clean:
	rm -rf build build-asan
