#pragma once

// What C++'s library on a Mac asks for, beside what glibc has in its other headers.
#include <locale.h>
#include <stddef.h>

extern "C" {
int asprintf_l(char** text, locale_t locale, const char* format, ...);
int snprintf_l(char* text, size_t size, locale_t locale, const char* format, ...);
int sscanf_l(const char* text, locale_t locale, const char* format, ...);
}
