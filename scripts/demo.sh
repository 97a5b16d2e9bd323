#!/usr/bin/env bash
# Builds the library and runs the demo: the library's typical requests, printed. Pictures of the
# scenes go to build/demo-output/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target znmt64_demo
mkdir -p build/demo-output
build/release/examples/demo/znmt64_demo build/demo-output
