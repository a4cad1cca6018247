#include "model/signals.h"

constinit Signals Tessera_B{};
constinit DiscreteWork Tessera_DW{};
