// SPDX-License-Identifier: MIT
// Compares bytes, ignoring the case of ASCII letters only, so that file names compare the same in
// every locale.
#pragma once

#pragma GCC visibility push(default)

int _mbsicmp(const unsigned char* left, const unsigned char* right);

#pragma GCC visibility pop
