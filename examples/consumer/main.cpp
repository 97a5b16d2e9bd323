// Uses the installed library through its umbrella header, as a module of the suite would.
#include <znmt64/znmt64.h>

#include <cstdio>

int main() {
  theMatrState.StartMatrLib();
  Mat m(2, 2);
  m(1, 1) = 2.0;
  m(2, 2) = 3.0;
  try {
    throw new CMatrExeption("consumer check");
  } catch (CMatrExeption* e) {
    char text[50];
    e->GetErrorMessage(text, sizeof text);
    e->Delete();
    std::printf("znmt64 consumer: m(2,2) = %g, caught \"%s\"\n", m(2, 2), text);
  }
  return m(2, 2) == 3.0 && theMatrState.m_bStarted ? 0 : 1;
}
