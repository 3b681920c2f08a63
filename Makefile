# The two commands of the README, each doing all the set-up on a fresh machine:
#   make run    builds and runs the tour (kelvo-host on the sample database and drawing)
#   make test   builds and runs the whole test suite, then again under the sanitizers
#               (the fuzz corpora and regressions are replayed in both); `make test-fuzz`
#               runs each fuzz target for a minute
BUILD ?= build
ASAN_BUILD ?= build-asan
BENCH_BUILD ?= build-bench
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 60
STANDARDS_DB ?= examples/standards.mdb
JOBS ?= 2

.PHONY: all deps build build-asan build-fuzz run test test-plain test-asan test-fuzz fuzz clean \
        standards bench

all: build

deps:
	@bash scripts/setup.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j$(JOBS)

build-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DKELVO_SANITIZE=ON
	cmake --build $(ASAN_BUILD) -j$(JOBS)

run: build standards
	cd examples && ../$(BUILD)/bin/kelvo-host tour.lsp

test-plain: build
	ctest --test-dir $(BUILD) --output-on-failure -j$(JOBS)

test-asan: build-asan
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  ctest --test-dir $(ASAN_BUILD) --output-on-failure -j$(JOBS)

test: test-plain test-asan

# The fuzz targets (fuzz/), built by clang with libFuzzer and the sanitizers in a folder
# of their own (-O1, line tables only: the usual fuzzing build). `make fuzz` runs each for
# FUZZ_SECONDS (default 60); `make test` runs each for 60 s with a fixed seed.
build-fuzz: deps
	cmake -S . -B $(FUZZ_BUILD) -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=None \
	  "-DCMAKE_CXX_FLAGS=-O1 -gline-tables-only" -DKELVO_FUZZ=ON -DKELVO_TESTS=OFF -DKELVO_BENCH=OFF
	cmake --build $(FUZZ_BUILD) -j$(JOBS) --target fuzz

fuzz: build-fuzz
	bash fuzz/run.sh $(FUZZ_BUILD) $(FUZZ_SECONDS)

test-fuzz: build-fuzz
	FUZZ_SEED=1 bash fuzz/run.sh $(FUZZ_BUILD) 60

# The sample standards database, built from examples/standards/*.sql by kelvo-host
# (rebuilt only when its sources, the host or the module changed).
standards: build
	bash examples/standards/build.sh $(BUILD)/bin/kelvo-host $(STANDARDS_DB)

# The database benchmarks, built in Release: ratios against the raw SQLite floor on
# tables of 10 k, 100 k and 1 M rows (generated once into $(BENCH_BUILD)/bin/bench-data).
# BENCH_ARGS passes options, e.g. BENCH_ARGS="--sizes 10000,100000".
bench: deps
	cmake -S . -B $(BENCH_BUILD) -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BENCH_BUILD) -j$(JOBS) --target kelvo-bench
	$(BENCH_BUILD)/bin/kelvo-bench $(BENCH_ARGS)

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(FUZZ_BUILD)
