// SPDX-License-Identifier: MIT
/* A host in C that knows the library by its ten names alone. The DLLs lie beside it, and nothing
   else does. Says what failed and returns 1, or returns 0. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

/* SOI, an Exif segment with ExifVersion 2.2 in its Exif directory, EOI. */
static const char picture[] =
    "\xFF\xD8\xFF\xE1\0\x34"
    "Exif\0\0II*\0\x08\0\0\0"
    "\1\0\x69\x87\4\0\1\0\0\0\x1A\0\0\0\0\0\0\0"
    "\1\0\0\x90\7\0\4\0\0\0"
    "0220\0\0\0\0\xFF\xD9";

static int failures;

static void expect(int holds, const char* what) {
  if (holds) return;
  printf("not so: %s\n", what);
  ++failures;
}

typedef void (*Found)(void);
typedef int (*Function)();

static Function find(HMODULE library, const char* name) {
  const FARPROC function = GetProcAddress(library, name);
  if (function == NULL) printf("not exported: %s\n", name);
  if (function == NULL) exit(1);
  return (Function)(Found)function;
}

/* Objects of the framework are pointers here; what needs one is refused at once without. */
static void callAll(HMODULE library) {
  char sound[15] = "untouched", path[] = "picture.jpg";
  float (*version)(const char*) = (float (*)(const char*))(Found)find(library, "GetExifVersion");
  expect(version(path) > 2.1f, "GetExifVersion");
  expect(find(library, "IsExifFile")(path) == 1, "IsExifFile");
  expect(find(library, "IsExifFile")("none.jpg") == 0, "IsExifFile of no file");
  expect(find(library, "OpenExifFile")(path, NULL, NULL) == 1, "OpenExifFile");
  expect(find(library, "GetExifInfo")(path, NULL) == 0, "GetExifInfo without a list");
  expect(find(library, "FreeInfoList")(NULL) == 0, "FreeInfoList without a list");
  expect(find(library, "GetSoundFile")(path, sound) == 0 && strcmp(sound, "untouched") == 0,
         "GetSoundFile");
  expect(find(library, "SaveFile")(path, "saved.jpg", NULL, NULL) == 0, "SaveFile of no image");
  expect(find(library, "SaveProcessFile")(path, "saved.jpg", 3, NULL, NULL) == 0,
         "SaveProcessFile of no image");
  expect(find(library, "AddAudio")(path, "host", NULL, NULL) == 0, "AddAudio of no image");
  expect(find(library, "AddAudioFile")(path, "host", sound, NULL, NULL, NULL) == 0,
         "AddAudioFile of no image");
  expect(GetFileAttributesA("saved.jpg") == INVALID_FILE_ATTRIBUTES, "nothing is saved");
}

static const wchar_t* block(HMODULE library, WORD number, WORD language) {
  return LockResource(LoadResource(
      library, FindResourceExW(library, (LPCWSTR)RT_STRING, MAKEINTRESOURCEW(number), language)));
}

static int countTexts(HMODULE library, WORD language) {
  const wchar_t* text = NULL;
  int i, count = 0;
  for (i = 0; i < 10 * 16; ++i) {
    if (i % 16 == 0) text = block(library, (WORD)(i / 16 + 1), language);
    if (text == NULL) return 0;
    count += *text != 0;
    text += 1 + *text;
  }
  return count;
}

/* The texts are ordinary string resources in thirteen languages, which tools and the system's own
   lookup find: by sixteen, each after its length, ids 0 to 15 in block 1 and 144 to 159 in 10. */
static void findTexts(HMODULE library) {
  static const WORD languages[] = {1028, 1031, 1033, 1034, 1035, 1036, 1040,
                                   1041, 1042, 1043, 1053, 2052, 2070};
  const wchar_t* german = block(library, 1, 1031);
  wchar_t text[64];
  int i;
  expect(german != NULL && german[0] == 0 && german[1] == 16 &&
             memcmp(german + 2, L"Bildbeschreibung", 32) == 0,
         "German text 1");
  for (i = 0; i < 13; ++i)
    expect(countTexts(library, languages[i]) == 157, "157 texts in every language");
  expect(LoadStringW(library, 1, text, 64) > 5, "text 1 in the thread's language");
  expect(LoadStringW(library, 19, text, 64) == 0, "no text 19");
}

int main(void) {
  const HMODULE library = LoadLibraryA("exifkeep.dll");
  FILE* file = fopen("picture.jpg", "wb");
  if (library == NULL) printf("exifkeep.dll does not load: error %lu\n", GetLastError());
  if (library == NULL) return 1;
  expect(file != NULL && fwrite(picture, sizeof picture - 1, 1, file) == 1 && fclose(file) == 0,
         "the picture is written");
  callAll(library);
  findTexts(library);
  remove("picture.jpg");
  expect(FreeLibrary(library), "the library can be unloaded");
  return failures != 0;
}
