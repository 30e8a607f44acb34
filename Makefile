# Thin wrapper around CMake for the two everyday commands and CI's extra builds.
BUILD       ?= build
ASAN_BUILD  ?= build-asan
BENCH_BUILD ?= build-bench
JOBS        ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_FLAGS ?=

.PHONY: all test demo bench asan fuzz deps install-check check-includes format clean editor editor-build editor-test editor-speed

all: test

# Installs the Debian packages the build needs when they are missing (no-op on a prepared machine).
deps:
	@bash scripts/ensure-deps.sh

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DSIMPLEPATH_WERROR=ON $(CMAKE_FLAGS)

test: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# Runs the command-line tool on the sample drawings and writes a before/after pair of drawings.
demo: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS) --target simplepath_tool
	bash scripts/demo.sh $(BUILD)/tools/simplepath examples/data $(BUILD)/demo

# Every test again under AddressSanitizer and UndefinedBehaviorSanitizer, with clang; any report fails.
asan: deps
	CXX=clang++ cmake -S . -B $(ASAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DSIMPLEPATH_WERROR=ON \
	    -DSIMPLEPATH_SANITIZE=ON -DSIMPLEPATH_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	    ctest --test-dir $(ASAN_BUILD) --output-on-failure -j $(JOBS)

bench: deps
	cmake -S . -B $(BENCH_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release -DSIMPLEPATH_BUILD_TESTS=OFF $(CMAKE_FLAGS)
	cmake --build $(BENCH_BUILD) -j $(JOBS) --target bench_all
	@for b in $(BENCH_BUILD)/bench/bench_*; do if [ -x "$$b" ]; then "$$b" $(BENCH_ARGS) || exit 1; fi; done

# libFuzzer targets (clang, ASan + UBSan), each run for FUZZ_SECONDS on its seed corpus.
FUZZ_SECONDS ?= 60
fuzz: deps
	CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug -DSIMPLEPATH_BUILD_FUZZ=ON \
	    -DSIMPLEPATH_BUILD_TESTS=OFF -DSIMPLEPATH_BUILD_BENCH=OFF -DSIMPLEPATH_BUILD_TOOLS=OFF \
	    -DSIMPLEPATH_BUILD_EXAMPLES=OFF -DSIMPLEPATH_SANITIZE=ON
	cmake --build build-fuzz -j $(JOBS)
	@for f in build-fuzz/tests/fuzz/fuzz_*; do \
	    name=$$(basename $$f); corpus=tests/fuzz/corpus/$$name; scratch=build-fuzz/corpus-$$name; \
	    mkdir -p $$scratch; echo "fuzzing $$name for $(FUZZ_SECONDS)s"; \
	    $$f -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 $$scratch $$corpus || exit 1; \
	done

# Fails on an include that runs up the folder order or from a public header into a private one.
check-includes:
	python3 scripts/check-includes.py

# Installs into a scratch prefix and builds a consumer that finds the library with find_package.
install-check: deps
	bash scripts/install-check.sh

# The browser editor: the library compiled to WebAssembly with the page around it (web/), served on
# 127.0.0.1, and its browser tests in headless Chromium.
EDITOR_PORT ?= 8765
editor-build:
	@bash scripts/ensure-editor-deps.sh
	$(MAKE) -C web -j 2

editor: editor-build
	@echo "simplepath editor: http://127.0.0.1:$(EDITOR_PORT)/  (Ctrl+C stops the server)"
	python3 -m http.server $(EDITOR_PORT) --bind 127.0.0.1 --directory build-web/site

editor-test:
	@bash scripts/ensure-editor-deps.sh --npm
	$(MAKE) -C web -j 2
	cd web && node tests/run.mjs

# The editor's speed on a 1 MB drawing (drag frame, opening time), reported against its targets.
editor-speed:
	@bash scripts/ensure-editor-deps.sh --npm
	$(MAKE) -C web -j 2
	cd web && node tests/run.mjs --only 'big drawing' --speed

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(BENCH_BUILD) build-install build-fuzz build-web
