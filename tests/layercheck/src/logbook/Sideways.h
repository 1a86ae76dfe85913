#pragma once

// Sideways: the logbook and storage do not use each other.
#include "storage/FileIo.h"
