#pragma once

// The numbers of the resources. Read by the resource compiler too, which knows nothing but #define.
#define IDI_WINDOW 1
#define IDI_PHASE0 100  // the first of the phase pictures, which follow in the order of the lunation
#define PHASE_PICTURES 28
