#pragma once

// Reaches up: the core may not know how files are stored.
#include "storage/UserList.h"
