#pragma once
// The session is beneath the forms: it may not reach up into them.
#include "forms/frame/UsersForm.h"
