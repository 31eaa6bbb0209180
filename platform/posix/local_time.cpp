// SPDX-License-Identifier: MIT
#include <time.h>
#include <windows.h>

void GetLocalTime(LPSYSTEMTIME time) {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  tm local = {};
  localtime_r(&now.tv_sec, &local);
  time->wYear = static_cast<WORD>(local.tm_year + 1900);
  time->wMonth = static_cast<WORD>(local.tm_mon + 1);
  time->wDayOfWeek = static_cast<WORD>(local.tm_wday);
  time->wDay = static_cast<WORD>(local.tm_mday);
  time->wHour = static_cast<WORD>(local.tm_hour);
  time->wMinute = static_cast<WORD>(local.tm_min);
  time->wSecond = static_cast<WORD>(local.tm_sec);
  time->wMilliseconds = static_cast<WORD>(now.tv_nsec / 1000000);
}
