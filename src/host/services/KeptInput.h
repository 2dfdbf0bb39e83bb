#pragma once

#include "host/records/ComponentBridge.h"
#include "host/services/DialogValues.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <optional>

namespace host {

/// What a user had typed into a dialog that closed without saving it.
struct KeptInput {
  /// Opens the dialog again; none for one that only another dialog can open.
  std::optional<ComponentRequest> request;
  QString dialog;              ///< Its class.
  QString title;               ///< As the window had it.
  QDateTime moment;            ///< When it closed.
  QString reason;              ///< The last message that was shown; may be empty.
  QString focus;               ///< The control that had the focus.
  QList<ControlValue> values;  ///< Those that differ from what the dialog began with.
  QStringList rows;            ///< Of its lists, which can't be put back.

  /// All of it as text with line breaks, for copying.
  QString Text() const;
};

QJsonObject ToJson(const KeptInput& input);
/// Nothing for an object that is no such input.
std::optional<KeptInput> KeptInputFrom(const QJsonObject& object);

/// What was read of such a file.
struct TakenInputs {
  QList<KeptInput> inputs;
  QString unread;  ///< The file that has what could not be read; empty where there is none.
};

/// Keeps inputs in a private file of their own, before those that another program kept there. False when it could not
/// be written.
bool WriteKeptInputs(const QString& file, const QList<KeptInput>& inputs);
/// Reads what was kept there, and takes the file away. One that is damaged in any part, of a newer version, longer than
/// any such file, or kept under another name is put aside; one that is a link or another user's stays as it is.
TakenInputs TakeKeptInputs(const QString& file);

/// The file of a user and a database, in the user's data folder.
QString KeptInputFile(const QString& database, int userId);

}  // namespace host
