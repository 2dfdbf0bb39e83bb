#pragma once

#include "host/mailing/selection/SelectionStore.h"

#include <QString>

#include <functional>

namespace host {

/// What the mailing window has from the program that shows it.
struct MailingContext {
  QString connectionString;
  QString title;     ///< Of the program, for message boxes.
  QString userName;  ///< The signed-in user's.
  QString database;  ///< As the user knows it.
  SelectionUser user;
  bool readOnly = false;       ///< Nothing may be saved.
  bool demonstration = false;  ///< The data are invented.
  QString helpFile;            ///< Opened by F1; empty for none.
  /// Opens the dialog of a letter or a sheet.
  std::function<void(int node, int id)> openRecord;
  /// Opens the dialog in which printers are measured.
  std::function<void()> calibrate;
};

}  // namespace host
