#include <znag64/AnGeoState.h>

namespace {
int g_starts = 0;
}

void InitAnGeoDll() {
  if (g_starts == 0) ++g_starts;
}

int AnGeoStartCount() { return g_starts; }
