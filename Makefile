# Each command does all of its own set-up; a second run takes seconds.
BUILD ?= build
JOBS ?= $(shell nproc)

# Most tests wait, for a sound or a program; those that compute count double (PROCESSORS).
CTEST = ctest --test-dir $(BUILD) --output-on-failure --no-tests=error -j$$((2 * $(JOBS)))
# A folder that plain CMake made keeps its own generator and options. Otherwise small files with
# the same big headers are compiled together, in a third of the time.
NEW = $(if $(wildcard $(BUILD)/CMakeCache.txt),,-G Ninja -DCMAKE_UNITY_BUILD=ON)
CONFIGURE = cmake -S . -B $(BUILD) $(NEW)
MACHINES = /usr/bin/python3 -B -m pytest -v -p no:cacheprovider
CXX_FILES = $(shell git ls-files '*.cpp' '*.h')

.DEFAULT_GOAL := help
.PHONY: help run test test-all test-packages test-machines test-groups desktops bench fuzz catalogues format lint build build-tests deb dist

help:
	@echo "make run       build Tavin and start it (without a desktop: a demonstration)"
	@echo "make test      build and run the tests with light programs"
	@echo "make test-all  the tests with browsers, further panels and window managers as well"
	@echo "make desktops  Debian 13's desktops in a folder, for those tests (6 minutes, 4 GB)"
	@echo "make deb       build a Debian package in $(BUILD)/packages"
	@echo "make dist      make the source archive there"
	@echo "make test-packages  build and try packages in bare Debian 12 and 13 (as root)"
	@echo "make test-machines  try make run and make test on bare machines in folders (as root)"
	@echo "make test-groups    install each group of packages alone on one, and use it (as root)"
	@echo "make bench     build and print the measurements"
	@echo "make fuzz      send Tavin what libFuzzer makes up, a minute for each kind of sender"
	@echo "make catalogues  take new texts into the translations"
	@echo "make format    format the C++ sources"
	@echo "make lint      clang-format and clang-tidy, warnings as errors"

build:
	@tools/setup build engine
	@$(CONFIGURE) $(if $(NEW),-DBUILD_TESTING=OFF)
	@cmake --build $(BUILD) -j$(JOBS)

build-tests:
	@tools/setup test
	@$(CONFIGURE) -DBUILD_TESTING=ON
	@cmake --build $(BUILD) -j$(JOBS)

# All of its packages at once: one question for a password.
run:
	@tools/setup build engine $$(tools/has-display || echo demo)
	@$(MAKE) --no-print-directory build
	@tools/run $(BUILD)

test: build-tests
	$(CTEST) -LE 'heavy|debian13|soak'

# ONLY=heavy leaves out what `make test` runs, Debian 13, whose folder takes 4 GB, and the soak, which
# strikes others each time; EXCEPT='kde|gnome' leaves out more, EXCEPT=long what CI does not run. The set-up
# comes before the build: one of the tests' programs is made only where its protocol is installed.
test-all:
	@tools/setup heavy wayland neural $(if $(filter kde|gnome,$(EXCEPT)),,desktops)
	@$(if $(filter heavy,$(ONLY)),,$(MAKE) --no-print-directory desktops)
	@$(MAKE) --no-print-directory build-tests
	$(CTEST) $(if $(ONLY),-L $(ONLY)) $(if $(EXCEPT),-LE '$(EXCEPT)')

desktops:
	@tools/setup debootstrap
	@tools/desktops

deb:
	@tools/setup build package
	@DEB_BUILD_OPTIONS="nocheck $$DEB_BUILD_OPTIONS" DEB_BUILD_PROFILES=nocheck tools/package deb $(BUILD)/packages

dist:
	@tools/package dist $(BUILD)/packages

# Machines are made once, in 3 minutes and 1.3 GB in the user's cache; tools/bare runs more there.
test-machines:
	@tools/setup test debootstrap
	$(MACHINES) --ignore tests/machines/test_groups.py tests/machines

test-groups:
	@tools/setup test debootstrap
	$(MACHINES) tests/machines/test_groups.py

# As root: each machine is a folder of 400 MB in the user's cache, made at the first run.
test-packages: build
	@tools/setup debootstrap
	@tests/packages/run $(BUILD)

bench: build-tests
	@tools/setup bench
	cmake --build $(BUILD) -j$(JOBS) --target bench

# FUZZ_SECONDS is how long each target runs.
fuzz:
	@tools/setup fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz -j$(JOBS)
	@tests/fuzz/run build-fuzz

catalogues: build
	cmake --build $(BUILD) --target catalogues

format:
	@tools/setup lint
	clang-format-14 -i $(CXX_FILES)

lint: build-tests
	@tools/setup lint
	clang-format-14 --dry-run --Werror $(CXX_FILES)
	cmake --preset tidy
	cmake --build --preset tidy -j$(JOBS)
