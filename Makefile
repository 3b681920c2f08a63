# The two commands of the README, each doing all the set-up on a fresh machine:
#   make run    builds and runs the tour (kelvo-host on the sample database and drawing)
#   make test   builds and runs the whole test suite, then again under the sanitizers
BUILD ?= build
ASAN_BUILD ?= build-asan
JOBS ?= 2

.PHONY: all deps build build-asan run test test-plain test-asan clean

all: build

deps:
	@bash scripts/setup.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j$(JOBS)

build-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DKELVO_SANITIZE=ON
	cmake --build $(ASAN_BUILD) -j$(JOBS)

run: build
	cd examples && ../$(BUILD)/bin/kelvo-host tour.lsp

test-plain: build
	ctest --test-dir $(BUILD) --output-on-failure -j$(JOBS)

test-asan: build-asan
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  ctest --test-dir $(ASAN_BUILD) --output-on-failure -j$(JOBS)

test: test-plain test-asan

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
