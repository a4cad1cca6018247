#pragma once

/// Assigns all 146 cells of Tessera_Y: what is computed on a tick from its held sample, the rest anew.
void write_outputs();
