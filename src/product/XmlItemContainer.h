#pragma once

// Kept for code that includes the container template from its former place.
#include "base/XmlItemContainer.h"
