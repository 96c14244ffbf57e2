// ORB start-up. (Placeholder until the ORB wrapper lands.)
#include "remote/orb_startup.h"

void StartOrb() {}

void ReleaseValueFactories() {}
