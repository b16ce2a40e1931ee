#pragma once

#include "NSWorkspace.h"
