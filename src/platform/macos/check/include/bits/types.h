#pragma once

// The 64-bit integers of a Mac are `long long`, those of 64-bit Linux are `long`: what mixes them
// with others compiles on one of the two alone.
#ifdef __APPLE__
#define __int64_t glibc_int64
#define __uint64_t glibc_uint64
#include_next <bits/types.h>
#undef __int64_t
#undef __uint64_t
typedef long long __int64_t;
typedef unsigned long long __uint64_t;
#else
#include_next <bits/types.h>
#endif
