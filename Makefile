# The two set-up commands: `make demo` and `make test`. Both install what they need first.
JOBS ?= $(shell nproc)
BUILD_TYPE ?= RelWithDebInfo
CMAKE ?= cmake

.PHONY: all deps build test test-asan demo clean

all: build

deps:
	@scripts/install-deps.sh build test

build: deps
	$(CMAKE) -S . -B build -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)
	$(CMAKE) --build build -j $(JOBS)

test: build
	cd build && ctest --output-on-failure -j $(JOBS)

test-asan: deps
	$(CMAKE) -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DKIVCORE_SANITIZE=ON
	$(CMAKE) --build build-asan -j $(JOBS)
	cd build-asan && ctest --output-on-failure -j $(JOBS)

demo: build
	@scripts/demo.sh build/tools/kivtool/kivtool out

clean:
	rm -rf build build-asan build-tsan out
