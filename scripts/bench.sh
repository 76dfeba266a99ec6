#!/bin/bash
# bench.sh [OPTION...]: builds the benches and runs them on an X display of their own, without the
# display of a desktop in between. Options go to the program, for example
# --benchmark_filter='Draw/'. What the figures mean stands in docs/benchmarks.md.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset release >/dev/null
cmake --build --preset release --target zep_bench >/dev/null
exec scripts/with-display.sh build/release/bin/zep_bench "$@"
