// SPDX-License-Identifier: MIT
// Fills the host's list of labels and values from a file's metadata.
#pragma once

#include <afxwin.h>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// Append the items of the fields that are present, in the order of their display rows.
// REQUIRES for those of the GPS directory: the list is a FieldList.
void AppendImageInfoItems(const ImageIfdRecord& primary, CPtrList& list, bool isFieldList);
void AppendExifInfoItems(const ExifIfdRecord& exif, CPtrList& list, bool isFieldList);
void AppendGpsInfoItems(const GpsIfdRecord& gps, CPtrList& list);

// Reads the file and appends its items, those of IFD0 first. False, with the list unchanged, if the
// file is not an Exif file. If memory runs out, restores the list and throws.
bool FillInfoList(ExifReader& reader, const char* path, CPtrList& list);

// Removes and destroys all elements.
void emptyInfoList(CPtrList& list);

}  // namespace exifkeep
