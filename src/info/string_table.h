// SPDX-License-Identifier: MIT
// The library's string table in all languages, compiled from res/, and the ids of words used in
// values. The ids of labels and of the other words are in display_rows.h and words.h.
#pragma once

#include <afxwin.h>

namespace exifkeep {

extern const AfxStringTable stringTable;

namespace word {
inline constexpr UINT centimeters = 14;
inline constexpr UINT inches = 15;
inline constexpr UINT reserved = 16;
inline constexpr UINT seconds = 72;
inline constexpr UINT notDefined = 73;
inline constexpr UINT unknown = 82;
inline constexpr UINT other = 89;
inline constexpr UINT digitalStillCamera = 128;
inline constexpr UINT notDigitalStillCamera = 129;
inline constexpr UINT directlyPhotographed = 130;
inline constexpr UINT normal = 131;
inline constexpr UINT doesNotExist = 152;
inline constexpr UINT millimetres = 156;
inline constexpr UINT r98 = 157;
}  // namespace word

}  // namespace exifkeep
