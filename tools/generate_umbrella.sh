#!/usr/bin/env bash
# Writes quorel/quorel.h, the umbrella header, from the public headers that
# exist: every quorel/<namespace>/*.h (private headers live under src/).
set -euo pipefail
cd "$(dirname "$0")/.."
{
    echo "// quorel: every public header of the library."
    echo "#ifndef QUOREL_QUOREL_H"
    echo "#define QUOREL_QUOREL_H"
    echo
    for header in $(ls quorel/*/*.h | LC_ALL=C sort); do
        echo "#include <$header>"
    done
    echo
    echo "#endif"
} > quorel/quorel.h
