// Comparison of 8-bit strings as the C runtime names it. Bytewise; case is folded for ASCII letters
// only, so that a file name compares alike in every locale.
#pragma once

#pragma GCC visibility push(default)

int _mbsicmp(const unsigned char* left, const unsigned char* right);

#pragma GCC visibility pop
