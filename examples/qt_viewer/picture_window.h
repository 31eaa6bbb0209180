// SPDX-License-Identifier: MIT
// The window of qt_viewer, which shows a picture, its thumbnail and its properties.
#pragma once

#include <exifkeep/exifkeep.h>

#include <QLabel>
#include <QMainWindow>
#include <QTableWidget>

class PictureWindow : public QMainWindow {
 public:
  PictureWindow();

  // Shows a picture with or without Exif data. False if it cannot be decoded.
  bool open(const QString& path);
  // Saves the picture with the metadata of the file it was opened from. False, with the file
  // unchanged, if it cannot be written.
  bool saveAs(const QString& path);

 private:
  void addMenu();
  void askAndOpen();
  void askAndSave();
  void listProperties();

  QString path_;
  PRaster image_;
  QLabel* picture_ = new QLabel;
  QLabel* thumbnail_ = new QLabel;
  QTableWidget* properties_ = new QTableWidget(0, 2);
};
