// SPDX-License-Identifier: MIT
// qt_viewer: shows a picture and its properties, and saves it with its metadata.
//
//   qt_viewer [PICTURE]
#include <QApplication>
#include <QFile>
#include <cstdio>

#include "picture_window.h"

int main(int count, char** arguments) {
  QApplication application(count, arguments);
  PictureWindow window;
  if (count > 1 && !window.open(QFile::decodeName(arguments[1]))) {
    std::fprintf(stderr, "qt_viewer: %s cannot be decoded\n", arguments[1]);
    return 1;
  }
  window.resize(1100, 560);
  window.show();
  return QApplication::exec();
}
