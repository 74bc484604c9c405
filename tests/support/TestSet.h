#pragma once

// insertTestSet() stands with the other helpers that fill a store.
#include "support/TestSupport.h"
