// The benchmark program: every pair of bench_*.cpp in one run, so ratios come from one machine
// state.
#include <benchmark/benchmark.h>

extern "C" void openblas_set_num_threads(int);

int main(int argc, char** argv) {
  // Our library runs on the caller's thread; the anchors are held to one thread as well (the
  // script also sets OPENBLAS_NUM_THREADS=1).
  openblas_set_num_threads(1);
  __builtin_cpu_init();
  benchmark::AddCustomContext("cpu_avx512f", __builtin_cpu_supports("avx512f") ? "yes" : "no");
  benchmark::AddCustomContext("cpu_avx2", __builtin_cpu_supports("avx2") ? "yes" : "no");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
