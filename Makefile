# Thin wrappers around CMake. `make demo` and `make test` do everything on a fresh Debian 12 machine.

# In CI a warning is an error.
WERROR := $(if $(CI),ON,OFF)
JOBS ?= $(shell nproc)
# A folder beside this repository that holds the archive conformance runner; its checks join `make test` when found.
KIT ?= $(firstword $(patsubst %/conformance/run.sh,%,$(wildcard ../*/conformance/run.sh)))

.PHONY: all build demo test test-release test-asan test-tsan conformance conversion interface bench coverage package install-deps format clean

all: build

install-deps:
	@scripts/install_deps.sh

build: install-deps
	@mkdir -p build
	@cmake --preset release -DVO_ABC_WERROR=$(WERROR) >build/configure.log 2>&1 || { cat build/configure.log; exit 1; }
	@cmake --build --preset release -j $(JOBS)

demo: build
	@scripts/demo.sh build/release/bin/vo_abc

test: test-release conformance conversion interface test-asan
	@echo "all tests passed"

test-release: build
	@ctest --preset release -j $(JOBS)

test-asan test-tsan: test-%: install-deps
	@cmake --preset $* -DVO_ABC_WERROR=$(WERROR) >/dev/null
	@cmake --build --preset $* -j $(JOBS)
	@ctest --preset $* -j $(JOBS)

conformance: build
ifneq ($(KIT),)
	@Alembic_DIR=$(CURDIR)/build/release/alembic $(KIT)/conformance/run.sh --hard --work build/conformance
else
	@echo "conformance: no kit beside this repository, skipped"
endif

conversion: conformance
ifneq ($(KIT),)
	@scripts/conversion_check.sh $(KIT)/conformance build/conformance/bin/abcdump build/release/bin/vo_abc
else
	@echo "conversion: no kit beside this repository, skipped"
endif

interface: build
ifneq ($(KIT),)
	@scripts/interface_check.sh $(KIT)/alembic/interface_check/check.sh build/release
else
	@echo "interface: no kit beside this repository, skipped"
endif

bench: build
	@scripts/bench.sh build/release

coverage: install-deps
	@scripts/coverage.sh

package: build
	@cd build/release && cpack

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build
