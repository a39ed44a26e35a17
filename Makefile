# The front door: each target installs what it needs, builds in build/ and runs.

# Debian's own tools first: a compiler, a CMake or a Python from elsewhere, further up the path,
# would not find Debian's libraries or would find its own in their place.
export PATH := /usr/sbin:/usr/bin:/sbin:/bin:$(PATH)

# Every test is a process of its own, so they can run side by side.
export CTEST_PARALLEL_LEVEL ?= $(shell nproc)

ARGS ?=

.PHONY: help demo test torture bench packages docs format lint check clean
.NOTPARALLEL:

help: ## this list
	@echo 'make <target>:'
	@sed -n 's/^\([a-z]*\):.*## \(.*\)/  \1\t\2/p' $(MAKEFILE_LIST)

demo: ## watch the bundled station live through a morning (ARGS="--seed 7" to repeat one)
	@scripts/install-dependencies build
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then scripts/install-dependencies desk || \
	  echo 'The demo goes on, without window or voice if need be.'; fi
	@cmake --preset demo >/dev/null
	@cmake --build --preset demo
	@build/demo/host/ravelinox demo $(ARGS)

test: ## build for debugging and run all tests
	@scripts/install-dependencies test
	@cmake --workflow --preset dev

torture: ## kill, damage, starve and mislead it; figures in build/torture.tsv (ARGS="--seed 7 kills")
	@scripts/install-dependencies torture
	@for preset in dev threads fuzz; do cmake --preset $$preset >/dev/null || exit; done
	@cmake --build --preset dev --target ravelinox_server ravelinox_program
	@cmake --build --preset threads
	@cmake --build --preset fuzz
	@PYTHONDONTWRITEBYTECODE=1 python3 tests/torture/torture.py --source . \
	  --library build/dev/lib/Ravelinox.so --program build/dev/host/ravelinox \
	  --out build/torture.tsv $(ARGS)

bench: ## build optimised and run the benchmarks (ARGS="--benchmark_filter=...")
	@scripts/install-dependencies bench
	@cmake --preset release >/dev/null
	@cmake --build --preset release --target ravelinox_bench
	@build/release/bench/ravelinox_bench --benchmark_repetitions=5 \
	  --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true $(ARGS)

packages: ## make Debian packages of library, development files, program and Python module
	@scripts/install-dependencies packages
	@cmake --preset demo -DRAVELINOX_BUILD_TELEPHONE=ON >/dev/null
	@cmake --build --preset demo
	@rm -rf build/demo/packages
	@cd build/demo && cpack -D CPACK_OUTPUT_FILE_PREFIX=packages >cpack.log || { cat cpack.log; exit 1; }
	@ls build/demo/packages/*.deb

docs: ## guides and reference as pages to browse, in build/docs/html
	@scripts/install-dependencies docs
	@mkdir -p build && doxygen docs/Doxyfile
	@echo 'build/docs/html/index.html'

format: ## put every source file into the house style
	@scripts/install-dependencies check
	@scripts/format

lint: ## look for faults that compilers do not warn of
	@scripts/install-dependencies check
	@scripts/lint

check: ## everything that a change has to pass
	@.ci/run

clean: ## remove what was built
	@rm -rf build
