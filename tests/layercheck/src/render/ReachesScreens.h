#pragma once

// The drawing lies below the screens that use it.
#include "ui/charts/ChartWidgets.h"
