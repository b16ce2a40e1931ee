// The umbrella under which Core Graphics' events are documented.
#pragma once
#include <CoreGraphics/CoreGraphics.h>
