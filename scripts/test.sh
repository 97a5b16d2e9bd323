#!/usr/bin/env bash
# Builds and runs every test: the release and the sanitizer builds, then a consumer project
# built against the installed package.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh

for preset in release asan; do
  echo "== $preset"
  cmake --preset "$preset"
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done

echo "== installed package"
prefix="$PWD/build/release-install"
rm -rf "$prefix" build/consumer
cmake --install build/release --prefix "$prefix"
cmake -S examples/consumer -B build/consumer -G Ninja -DCMAKE_PREFIX_PATH="$prefix"
cmake --build build/consumer
build/consumer/znmt64_consumer
PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --exists znmt64

echo "== fuzz: each target for a minute (any finding fails)"
cmake --preset fuzz
cmake --build --preset fuzz
FUZZ_SEED=20261122 bash fuzz/run.sh 60

echo "== tsan: the whole suite under ThreadSanitizer"
cmake --preset tsan
cmake --build --preset tsan
ctest --preset tsan

echo "all tests passed"
