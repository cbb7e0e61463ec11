#!/usr/bin/env bash
# Sets a demonstration workstation up anew: a Wine prefix with the reference host and the program of build/windows.
#
#   scripts/workstation.sh [NAME] [--help]
#
# It is the folder build/NAME, by default build/workstation. To work on it, set WINEPREFIX to that folder.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"
lock_clone
wine_environment
name=${1:-workstation}
say "Setting up a workstation (build/$name)"
install_workstation "$PWD/build/$name" build/windows/bin 12
