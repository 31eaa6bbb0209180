// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <QApplication>

#include "codec/picture_fixture.h"
#include "picture_window.h"

namespace exifkeep::test {
namespace {

using QtViewer = ScratchTest;

TEST_F(QtViewer, OpensListsAndSaves) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  // Otherwise Qt would create a folder of its own among the temporary files.
  std::filesystem::permissions(path(""), std::filesystem::perms::owner_all);
  setenv("XDG_RUNTIME_DIR", path("").c_str(), 1);
  setLocaleVariables({{"LC_ALL", "C.UTF-8"}});
  int count = 1;
  char name[] = "qt_viewer", *arguments[] = {name, nullptr};
  const QApplication application(count, arguments);
  PRaster image = patterned(24, 64, 32);
  ASSERT_EQ(save(path("plain.jpg"), image), 1);
  writeFile(path("photo.jpg"), withPixels(exifJpeg("Mäker"), readFile(path("plain.jpg"))));

  PictureWindow window;
  const auto* list = window.findChild<QTableWidget*>();
  for (const char* file : {"photo.jpg", "saved.jpg"}) {
    ASSERT_TRUE(window.open(QString::fromStdString(path(file))));
    EXPECT_EQ(list->item(0, 1)->text(), QString("Mäker"));
    for (const auto* label : window.findChildren<QLabel*>())
      EXPECT_EQ(label->pixmap().isNull(), label != window.centralWidget() && file[0] == 'p');
    ASSERT_TRUE(window.saveAs(QString::fromStdString(path("saved.jpg"))));
  }
  EXPECT_TRUE(window.open(QString::fromStdString(path("plain.jpg"))));
  EXPECT_EQ(list->rowCount(), 0);
  EXPECT_FALSE(window.open(QString::fromStdString(path("gone.jpg"))));
}

}  // namespace
}  // namespace exifkeep::test
