// The library-wide state and its one-time start-up.
#pragma once
#include <znmt64/Config.h>

class ZNMT64_API StateMatr {
 public:
  StateMatr();

  // Starts the library once: registers it with the host and starts the 2D geometry module.
  // Later calls do nothing. Not locked: call it from the application's start-up thread.
  void StartMatrLib();

  int m_reserved[10];  // read nowhere; kept for the layout callers know
  bool m_bStarted;
};

// The library's state, constructed when the library is loaded.
ZNMT64_API extern StateMatr theMatrState;
