#pragma once

// The numbers of the resources. The resource compiler reads this too, and knows only #define.
#define IDI_WINDOW 1
#define IDI_PHASE0 100  // the first of the phase pictures, which follow in the order of the lunation
#define PHASE_PICTURES 28
