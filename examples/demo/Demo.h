// The demo's sections, one file each; main.cpp runs them in order.
#pragma once
#include <cstdio>
#include <string>

// Where a section may write pictures of its scene.
extern std::string g_outputDir;

inline void Section(const char* title) { std::printf("\n== %s\n", title); }

void DemoMatrices();
void DemoSolver();
void DemoFrames();
void DemoObjects();
void DemoTriangles();
void DemoLines();
