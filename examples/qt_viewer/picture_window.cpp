// SPDX-License-Identifier: MIT
// The library's types are converted to or from Qt's in three places: paths to 8-bit names, texts to
// QString, and the rows of a PRaster to those of a QImage.
#include "picture_window.h"

#include <language.h>

#include <QDockWidget>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QImage>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// The library owns the items of the list, which must always be returned to it.
struct Properties {
  Properties() = default;
  ~Properties() { FreeInfoList(&list); }
  Properties(const Properties&) = delete;
  Properties& operator=(const Properties&) = delete;
  exifkeep::InfoList list;
};

// Qt 6 requires a UTF-8 locale, so labels and values are UTF-8 too. Texts from the file may be in
// any charset; invalid UTF-8 becomes replacement characters.
QString toQt(const CString& text) {
  return QString::fromUtf8(text);
}

QTableWidgetItem* cell(const CString& text) {
  auto* item = new QTableWidgetItem(toQt(text));
  item->setFlags(item->flags() & ~Qt::ItemIsEditable);
  return item;
}

// Rows of 24 bits are blue, green and red, as in QImage's Format_BGR888. Null for an empty image.
QPixmap toQt(const PRaster& image) {
  QImage copy(static_cast<int>(image.width()), static_cast<int>(image.height()),
              QImage::Format_BGR888);
  for (unsigned y = 0; y < image.height(); ++y)
    std::ranges::copy(image.row(y), copy.scanLine(static_cast<int>(y)));
  return QPixmap::fromImage(copy);
}

void fill(const PRaster& image, QLabel& label, QSize space) {
  const QPixmap pixels = toQt(image);
  label.setPixmap(pixels.isNull()
                      ? pixels
                      : pixels.scaled(space, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

}  // namespace

PictureWindow::PictureWindow() {
  // Qt gives the user's language by name, such as de_AT. It applies to calls on this thread.
  SetThreadUILanguage(exifkeep::matchLanguage(QLocale().name().toStdString()));
  picture_->setAlignment(Qt::AlignCenter);
  setCentralWidget(picture_);
  properties_->horizontalHeader()->hide();
  properties_->horizontalHeader()->setStretchLastSection(true);
  properties_->verticalHeader()->hide();
  auto* side = new QWidget;
  auto* column = new QVBoxLayout(side);
  column->addWidget(thumbnail_, 0, Qt::AlignHCenter);
  column->addWidget(properties_);
  auto* dock = new QDockWidget("Properties");
  dock->setWidget(side);
  addDockWidget(Qt::RightDockWidgetArea, dock);
  resizeDocks({dock}, {420}, Qt::Horizontal);
  addMenu();
}

void PictureWindow::addMenu() {
  QMenu* menu = menuBar()->addMenu("&File");
  menu->addAction("&Open...", QKeySequence::Open, this, &PictureWindow::askAndOpen);
  menu->addAction("&Save as...", QKeySequence::SaveAs, this, &PictureWindow::askAndSave);
}

bool PictureWindow::open(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  PRaster image, thumbnail;
  // OpenExifFile returns 0 for a picture without Exif data, but that still has pixels.
  if (!OpenExifFile(name, &image, &thumbnail)) exifkeep::loadPicture(name, image);
  // From here on the depth is 24 bits. An empty image cannot be converted.
  if (!image.ConvertTo24bit()) return false;
  thumbnail.ConvertTo24bit();
  fill(image, *picture_, QSize(640, 480));
  fill(thumbnail, *thumbnail_, QSize(160, 160));
  image_ = std::move(image);
  path_ = path;
  setWindowTitle(path);
  listProperties();
  return true;
}

void PictureWindow::listProperties() {
  Properties properties;
  GetExifInfo(QFile::encodeName(path_), &properties.list);
  properties_->setRowCount(0);
  for (const exifkeep::InfoItem& item : exifkeep::items(properties.list)) {
    const int row = properties_->rowCount();
    properties_->insertRow(row);
    properties_->setItem(row, 0, cell(item.label));
    properties_->setItem(row, 1, cell(item.value));
  }
  properties_->resizeColumnToContents(0);
}

bool PictureWindow::saveAs(const QString& path) {
  // Without a thumbnail from the host, the library makes one from the image.
  return SaveFile(QFile::encodeName(path_), QFile::encodeName(path), &image_, nullptr) == 1;
}

void PictureWindow::askAndOpen() {
  const QString path = QFileDialog::getOpenFileName(this, "Open");
  if (!path.isEmpty() && !open(path))
    QMessageBox::warning(this, "Open", path + " is not a picture that can be decoded.");
}

void PictureWindow::askAndSave() {
  if (image_.IsEmpty()) return;
  const QString path = QFileDialog::getSaveFileName(this, "Save as", path_);
  if (!path.isEmpty() && !saveAs(path))
    QMessageBox::warning(this, "Save as", path + " cannot be written.");
}
