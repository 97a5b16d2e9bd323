// The library's typical requests, printed. Usage: znmt64_demo [output-dir]
#include <znmt64/znmt64.h>

#include "Demo.h"

std::string g_outputDir = ".";

int main(int argc, char** argv) {
  if (argc > 1) g_outputDir = argv[1];
  theMatrState.StartMatrLib();
  std::printf("znmt64 demo (library started: %s)\n", theMatrState.m_bStarted ? "yes" : "no");
  DemoMatrices();
  DemoSolver();
  DemoFrames();
  DemoObjects();
  DemoTriangles();
  DemoLines();
  return 0;
}
