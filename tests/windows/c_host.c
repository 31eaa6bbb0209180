/* A host in C that knows the library by its ten names alone. The DLLs lie beside it, and nothing
   else does. Says what failed and returns 1, or returns 0. */
#include <stdio.h>
#include <string.h>
#include <windows.h>

static const char* const names[] = {
    "IsExifFile",   "OpenExifFile", "GetExifInfo",     "FreeInfoList", "GetExifVersion",
    "GetSoundFile", "SaveFile",     "SaveProcessFile", "AddAudio",     "AddAudioFile"};
enum { nameCount = sizeof names / sizeof *names };

/* SOI, an Exif segment with ExifVersion 2.2 in its Exif directory, EOI. */
static const char picture[] =
    "\xFF\xD8\xFF\xE1\0\x34"
    "Exif\0\0II*\0\x08\0\0\0"
    "\1\0\x69\x87\4\0\1\0\0\0\x1A\0\0\0\0\0\0\0"
    "\1\0\0\x90\7\0\4\0\0\0"
    "0220\0\0\0\0\xFF\xD9";
static const char name[] = "picture.jpg";

static int failures;

static void expect(int holds, const char* what) {
  if (holds) return;
  printf("not so: %s\n", what);
  ++failures;
}

/* The functions as C sees them: objects of the framework are pointers. */
typedef void (*Function)(void);
typedef int (*OnPath)(const char*);
typedef float (*Version)(const char*);
typedef int (*Open)(const char*, void*, void*);
typedef int (*OnList)(void*);
typedef int (*Info)(const char*, void*);
typedef int (*Sound)(const char*, char*);
typedef int (*Save)(const char*, const char*, void*, void*);
typedef int (*Process)(const char*, const char*, int, void*, void*);
typedef int (*Audio)(char*, const char*, void*, void*);
typedef int (*AudioFile)(char*, const char*, char*, void*, void*, HWND);

/* Calls what works without an object of the framework; the others are refused at once. */
static void callAll(Function* functions) {
  char sound[15] = "untouched", path[MAX_PATH];
  strcpy(path, name);
  expect(((OnPath)functions[0])(name) == 1, "IsExifFile");
  expect(((OnPath)functions[0])("none.jpg") == 0, "IsExifFile of no file");
  expect(((Open)functions[1])(name, NULL, NULL) == 1, "OpenExifFile");
  expect(((Info)functions[2])(name, NULL) == 0, "GetExifInfo without a list");
  expect(((OnList)functions[3])(NULL) == 0, "FreeInfoList without a list");
  expect(((Version)functions[4])(name) > 2.1f, "GetExifVersion");
  expect(((Sound)functions[5])(name, sound) == 0 && strcmp(sound, "untouched") == 0,
         "GetSoundFile");
  expect(((Save)functions[6])(name, "saved.jpg", NULL, NULL) == 0, "SaveFile of no image");
  expect(((Process)functions[7])(name, "saved.jpg", 3, NULL, NULL) == 0,
         "SaveProcessFile of no image");
  expect(((Audio)functions[8])(path, "host", NULL, NULL) == 0, "AddAudio of no image");
  expect(((AudioFile)functions[9])(path, "host", sound, NULL, NULL, NULL) == 0,
         "AddAudioFile of no image");
  expect(GetFileAttributesA("saved.jpg") == INVALID_FILE_ATTRIBUTES, "nothing is saved");
}

/* The texts are ordinary string resources, which tools and the system's own lookup find. The first
   of a block, ids 0 to 15, is empty; before each text is its length. */
static void findTexts(HMODULE library) {
  wchar_t text[64];
  const wchar_t* german = LockResource(LoadResource(
      library, FindResourceExW(library, (LPCWSTR)RT_STRING, MAKEINTRESOURCEW(1), 1031)));
  expect(german != NULL && german[0] == 0 && german[1] == 16 &&
             memcmp(german + 2, L"Bildbeschreibung", 32) == 0,
         "German text 1");
  expect(LoadStringW(library, 1, text, 64) > 5, "text 1 in the thread's language");
  expect(LoadStringW(library, 19, text, 64) == 0, "no text 19");
}

static void writePicture(void) {
  FILE* file = fopen(name, "wb");
  expect(file != NULL && fwrite(picture, sizeof picture - 1, 1, file) == 1 && fclose(file) == 0,
         "the picture is written");
}

int main(void) {
  Function functions[nameCount];
  HMODULE library = LoadLibraryA("exifkeep.dll");
  int i;
  if (library == NULL) {
    printf("exifkeep.dll does not load: error %lu\n", GetLastError());
    return 1;
  }
  writePicture();
  for (i = 0; i < nameCount; ++i) {
    functions[i] = (Function)GetProcAddress(library, names[i]);
    if (functions[i] == NULL) printf("not exported: %s\n", names[i]);
    if (functions[i] == NULL) return 1;
  }
  callAll(functions);
  findTexts(library);
  remove(name);
  expect(FreeLibrary(library), "the library can be unloaded");
  return failures != 0;
}
