#!/usr/bin/env bash
# Makes the packages of a build and runs the tests of them in a new Wine prefix.
#
#   tests/endtoend/installer.sh BUILD_FOLDER PREFIX [--help]
build=$(realpath -m -- "${1:-build/windows}") prefix=$(realpath -m -- "${2:-build/installer-prefix}")
cd "$(dirname "$0")/../.."
source scripts/lib.sh
arguments 2 "$@"
wine_environment

tests/endtoend/packages.sh "$build"
use_new_prefix "$prefix"
mark_for_tests "$prefix"
use_null_display
PACKAGES=$(winepath -w "$build/packages") wine "$build/bin/qx_installer_tests.exe"
