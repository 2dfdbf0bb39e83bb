#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

/// Letters that could not be saved, kept in a folder that only the user can read ("Kel/cartas" of the user's data) as
/// files in RTF that any word processor opens.
namespace letters {

struct Rescued {
  QString file;
  qint32 record = 0;  ///< 0 for a letter that was never saved.
  QString name;       ///< Without the characters that file names don't take.
  QDateTime when;
};

/// Keeps a letter; false when that failed, too.
bool Rescue(const QByteArray& content, qint32 record, const QString& name);
/// The newest letter that was kept: of that record, or, for record 0, of any.
std::optional<Rescued> FindRescued(qint32 record);
QByteArray ReadRescued(const Rescued& letter);
void Discard(const Rescued& letter);

}  // namespace letters
