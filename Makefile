# Two commands: `make demo` and `make test`. Both install missing Debian packages
# first (as root) and build with CMake + Ninja.
BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc)
CMAKE_ARGS ?=

.PHONY: all deps configure build demo test test-asan bench clean

all: build

deps:
	@./scripts/install-deps.sh

$(BUILD)/build.ninja: | deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_ARGS)

configure: $(BUILD)/build.ninja

build: deps configure
	cmake --build $(BUILD) -j $(JOBS)

demo: build
	./$(BUILD)/bin/zelconv demo

# Every test of the normal build, then the core tests again under ASan + UBSan.
test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)
	$(MAKE) test-asan

test-asan: deps
	cmake -S . -B $(ASAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZEL260_SANITIZE=ON \
	  -DZEL260_WIDGETS=OFF -DZEL260_BENCH=OFF $(CMAKE_ARGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	  ctest --output-on-failure -j $(JOBS) -L core

bench: build
	@for b in $(BUILD)/bin/bench_*; do echo "== $$b"; $$b --benchmark_min_time=0.2; done

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
