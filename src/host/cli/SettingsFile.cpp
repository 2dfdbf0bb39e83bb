#include "host/cli/SettingsFile.h"

#include "platform/process/PrivateFiles.h"

#include <QDateTime>
#include <QFile>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString formatKey = u"Programa/Formato"_s;
// Grows when a key gets another meaning; new keys leave it.
constexpr int ownFormat = 1;

QString WhatIsWrong() {
  const QSettings settings;
  // The sections are parsed when they are asked for.
  settings.allKeys();
  if (settings.status() == QSettings::FormatError) {
    return u"está dañado"_s;
  }
  return settings.value(formatKey, ownFormat).toInt() > ownFormat ? u"es de una versión más nueva del programa"_s
                                                                  : QString();
}

void NoteFormat() {
  QSettings settings;
  if (settings.isWritable() && settings.value(formatKey).toInt() != ownFormat) {
    settings.setValue(formatKey, ownFormat);
  }
}

}  // namespace

QString PrepareSettings() {
  const QString wrong = WhatIsWrong();
  QString notice;
  if (!wrong.isEmpty()) {
    const QString file = QSettings().fileName();
    const QString aside = file + QDateTime::currentDateTime().toString(u"'.antes-'yyyy-MM-dd-HHmmss"_s);
    if (!QFile::rename(file, aside)) {
      return u"El archivo de preferencias «%1» %2, y no se puede apartar. Se usa lo que se entiende de él."_s.arg(
          file, wrong);
    }
    // The toolkit would make it with the mode that the mask leaves.
    process::TakePrivateFile(file);
    notice =
        u"El archivo de preferencias %1. El programa empieza con las de fábrica; las de antes se conservan en «%2»."_s
            .arg(wrong, aside);
  }
  NoteFormat();
  return notice;
}

}  // namespace host
