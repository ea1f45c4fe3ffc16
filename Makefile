# The project's front door: `make demo` and `make test`.
.PHONY: all deps build test test-debug test-tsan demo release package bench fuzz fuzz-smoke clean

JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 60

all: build

deps:
	@scripts/install-deps

build: deps
	cmake --preset debug
	cmake --build --preset debug -j $(JOBS)

# Everything under ASan+UBSan, the concurrency tests again under TSan, and a
# short run of each fuzz target so they keep building and running.
test: deps test-debug test-tsan fuzz-smoke

test-debug:
	cmake --preset debug
	cmake --build --preset debug -j $(JOBS)
	ctest --preset debug

test-tsan:
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS) --target tests_concurrency
	ctest --preset tsan

release: deps
	cmake --preset release
	cmake --build --preset release -j $(JOBS)

demo: release
	scripts/demo build/release

# The Debian package of the release build: build/release/quorvane-widgets_VERSION_ARCH.deb
package: release
	cmake --build --preset release --target package
	@ls build/release/quorvane-widgets_*.deb

# Benchmarks need only the bench program and the host from the release build;
# results go to bench/results.json and docs/performance.md.
bench: deps
	cmake --preset release
	cmake --build --preset release -j $(JOBS) --target qrv-bench qrv-widgets
	scripts/bench build/release

fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	scripts/fuzz build/fuzz $(FUZZ_SECONDS)

fuzz-smoke: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	scripts/fuzz build/fuzz 5

clean:
	rm -rf build gallery
