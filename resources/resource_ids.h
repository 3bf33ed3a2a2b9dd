#pragma once

// The numbers of the resources. Read by the resource compiler too, which knows nothing but #define.
#define IDI_WINDOW 1
#define IDI_PHASE0 100  // to IDI_PHASE0 + 27, in the order of the lunation
