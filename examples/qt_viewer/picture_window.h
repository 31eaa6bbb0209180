// The window of qt_viewer: a picture, its thumbnail and the list of its properties.
#pragma once

#include <exifkeep/exifkeep.h>

#include <QLabel>
#include <QMainWindow>
#include <QTableWidget>

class PictureWindow : public QMainWindow {
 public:
  PictureWindow();

  // Shows the picture, with Exif data or without. False when it cannot be decoded.
  bool open(const QString& path);
  // Writes the picture that is shown, with the metadata of the file it came from. False when the
  // file cannot be written; it is then as it was.
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
