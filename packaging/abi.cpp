// SPDX-License-Identifier: MIT
// Everything hosts are compiled with, for abidw to describe in exifkeep.abi: the public types and
// the signatures of the ten functions, whose symbols do not include them. All other functions are
// listed in libexifkeep0.symbols.
#include <code_page.h>
#include <exifkeep/field_list.h>
#include <language.h>
#include <module_strings.h>
#include <pxcodec32.h>
#include <shell_copy_handler.h>
#include <shellapi.h>

struct Abi {
  decltype(IsExifFile)* isExifFile;
  decltype(OpenExifFile)* openExifFile;
  decltype(GetExifInfo)* getExifInfo;
  decltype(FreeInfoList)* freeInfoList;
  decltype(GetExifVersion)* getExifVersion;
  decltype(GetSoundFile)* getSoundFile;
  decltype(SaveFile)* saveFile;
  decltype(SaveProcessFile)* saveProcessFile;
  decltype(AddAudio)* addAudio;
  decltype(AddAudioFile)* addAudioFile;
  exifkeep::FieldList fields;
  exifkeep::InfoField field;
  exifkeep::LanguageVariant variant;
  exifkeep::CodePageEncoder encoder;
  AFX_MAINTAIN_STATE2* state;
  CWinApp application;
  CWnd window;
  CodecCapability capability;
  tagLmmInfo memory;
  ShellCopyHandler copyHandler;
  SHFILEOPSTRUCTA copy;
  SYSTEMTIME time;
  LARGE_INTEGER position;
  LOGPALETTE palette;
};

extern "C" __attribute__((visibility("default"))) void exifkeepAbi(Abi*) {}
