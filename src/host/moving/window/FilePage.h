#pragma once

#include "host/moving/window/GridView.h"
#include "moving/Outline.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

namespace host {

/// Which file, which of its sheets, and how a list is to be read; its first rows show whether that is right.
class FilePage : public QWidget {
  Q_OBJECT

 public:
  explicit FilePage(QWidget* parent = nullptr);

  QString File() const;
  moving::ReadWishes Wishes() const;
  void SetFile(const QString& path);
  /// What was read.
  void Show(const moving::Outline& outline);
  void ShowFault(const QString& text);
  void ShowReading();

 Q_SIGNALS:
  /// Another file, or another form of it.
  void FileWanted();

 private:
  void Browse();
  void ShowSheet();
  void ShowHeadings(const moving::OutlinedTable& table);
  void ChooseHeadings();
  /// The one whose rows are shown; null for none.
  const moving::OutlinedTable* Current() const;
  QComboBox* AddBox(const char* name, const QString& label, QFormLayout& form);

  moving::Outline m_outline;
  moving::Headings m_wished;
  QString m_read;  ///< The file that was wanted last.
  QLineEdit* m_file;
  QComboBox* m_sheet;
  QComboBox* m_headings;
  QComboBox* m_encoding;
  QComboBox* m_separator;
  QLabel* m_state;
  GridView* m_sample;
};

}  // namespace host
