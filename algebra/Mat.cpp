#include <znmt64/Mat.h>
