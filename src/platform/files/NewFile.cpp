#include "platform/files/NewFile.h"

#include "platform/automation/Error.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace files {

NewFile::NewFile(const QString& path) : m_path(path), m_unfinished(path) {
  Open(m_unfinished.IsValid());
}

void NewFile::Next(const QString& path) {
  m_path = path;
  Open(m_unfinished.Next(path));
}

void NewFile::Open(bool isMade) {
  m_file.setFileName(isMade ? m_unfinished.Path() : QString());
  m_file.Forgive();
  const QFileInfo there(m_path);
  if (!isMade || (there.exists() && !there.isFile()) || !m_file.open(QIODevice::WriteOnly)) {
    throw automation::Error(
        automation::InvalidProcedureCall,
        u"No se puede escribir el archivo «%1». Compruebe la carpeta y sus permisos."_s.arg(m_path));
  }
}

void NewFile::Fail() const {
  throw automation::Error(
      automation::InvalidProcedureCall,
      u"El archivo «%1» no se ha podido escribir entero, y no se ha dejado. Compruebe si queda sitio "
      "en el disco."_s.arg(m_path));
}

void NewFile::RequireWhole() {
  const bool isWritten = m_file.flush() && !m_file.HasFailed() && m_file.error() == QFile::NoError;
  m_file.close();
  if (!isWritten) {
    Fail();
  }
}

void NewFile::Finish() {
  RequireWhole();
  if (!m_unfinished.Place(process::UnfinishedFile::Existing::Replace)) {
    Fail();
  }
}

qint64 NewFile::CheckedFile::writeData(const char* data, qint64 size) {
  const qint64 written = QFile::writeData(data, size);
  m_hasFailed = m_hasFailed || written != size;
  return written;
}

}  // namespace files
