# The two set-up commands: `make demo` and `make test`. Both install what they need first.
JOBS ?= $(shell nproc)
BUILD_TYPE ?= RelWithDebInfo
CMAKE ?= cmake
# Rebuilds after a change (and the four configurations CI builds) reuse earlier compiles when ccache is there.
LAUNCHER := $(if $(shell command -v ccache 2>/dev/null),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

.PHONY: all deps build test test-asan test-tsan fuzz bench demo package package-test docs clean

all: build

deps:
	@scripts/install-deps.sh build test

build: deps
	$(CMAKE) -S . -B build $(LAUNCHER) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)
	$(CMAKE) --build build -j $(JOBS)

test: build
	cd build && ctest --output-on-failure -j $(JOBS)

test-asan: deps
	$(CMAKE) -S . -B build-asan $(LAUNCHER) -DCMAKE_BUILD_TYPE=Debug -DKIVCORE_SANITIZE=ON
	$(CMAKE) --build build-asan -j $(JOBS)
	cd build-asan && ctest --output-on-failure -j $(JOBS)

# The suite under ThreadSanitizer (the thread test parses files on several threads at once).
test-tsan: deps
	$(CMAKE) -S . -B build-tsan $(LAUNCHER) -DCMAKE_BUILD_TYPE=Debug -DKIVCORE_TSAN=ON -DKIVCORE_BUILD_TOOLS=OFF
	$(CMAKE) --build build-tsan -j $(JOBS)
	cd build-tsan && ctest --output-on-failure -j $(JOBS)

# Each libFuzzer target for FUZZ_SECONDS under AddressSanitizer + UndefinedBehaviorSanitizer, seeded from
# fuzz/seeds and examples/; what they find new is kept in build-fuzz/corpus-*.
FUZZ_SECONDS ?= 300
fuzz:
	@scripts/install-deps.sh build fuzz
	CC=clang CXX=clang++ $(CMAKE) -S . -B build-fuzz $(LAUNCHER) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKIVCORE_SANITIZE=ON \
		-DKIVCORE_BUILD_FUZZ=ON -DKIVCORE_BUILD_TOOLS=OFF -DBUILD_TESTING=OFF
	$(CMAKE) --build build-fuzz -j $(JOBS) --target fuzz_product fuzz_esi
	@scripts/run-fuzzers.sh build-fuzz $(FUZZ_SECONDS)

# Benchmarks in Release over generated 3 MB and 30 MB files of each kind (and the real ESI files when
# ../shared/esi-samples is there); prints one table.
bench:
	@scripts/install-deps.sh build bench
	$(CMAKE) -S . -B build-bench $(LAUNCHER) -DCMAKE_BUILD_TYPE=Release -DKIVCORE_BUILD_BENCH=ON -DKIVCORE_BUILD_TOOLS=OFF \
		-DBUILD_TESTING=OFF
	$(CMAKE) --build build-bench -j $(JOBS) --target kivbench kivcatalogbench
	@python3 bench/report.py build-bench/bench/kivbench build-bench/data ../shared/esi-samples
	@python3 bench/catalog.py build-bench/bench/kivcatalogbench build-bench/data

# Only what the demo runs is built: the library and kivtool.
demo:
	@scripts/install-deps.sh build demo
	$(CMAKE) -S . -B build $(LAUNCHER) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)
	$(CMAKE) --build build -j $(JOBS) --target kivtool
	@scripts/demo.sh build/tools/kivtool/kivtool out

# Debian packages libkivcore0, libkivcore-dev and kivtool in build-package/: Release with Debian's hardening
# flags, installed to /usr, no run path.
package: export DEB_BUILD_MAINT_OPTIONS = hardening=+all
package:
	@scripts/install-deps.sh build package
	CXXFLAGS="$$(dpkg-buildflags --get CXXFLAGS) $$(dpkg-buildflags --get CPPFLAGS)" \
	LDFLAGS="$$(dpkg-buildflags --get LDFLAGS)" \
	$(CMAKE) -S . -B build-package $(LAUNCHER) -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DKIVCORE_PACKAGING=ON \
		-DBUILD_TESTING=OFF
	$(CMAKE) --build build-package -j $(JOBS)
	cd build-package && cpack -G DEB

# The packages unpacked into a scratch root: kivtool runs, the consumer builds with pkg-config and CMake,
# lintian finds no error.
package-test: package
	@tests/packaging/test-packages.sh build-package

# The API reference in build/docs/html; a Doxygen warning fails it.
docs:
	@scripts/install-deps.sh build docs
	$(CMAKE) -S . -B build $(LAUNCHER) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)
	$(CMAKE) --build build --target docs

clean:
	rm -rf build build-asan build-tsan build-fuzz build-bench build-package out
