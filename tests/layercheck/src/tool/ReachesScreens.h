#pragma once

// The tool links the engine and the shared drawing, never the screens.
#include "ui/TextConvert.h"
