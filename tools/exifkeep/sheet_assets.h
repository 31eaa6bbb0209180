// The style and the script of the HTML page, from sheet.css and sheet.js.
#pragma once

namespace program {

extern const char* const sheetStyle;
extern const char* const sheetScript;

}  // namespace program
