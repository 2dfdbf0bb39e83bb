#include "moving/Source.h"

#include "moving/FrameParser.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

// The process goes with this object, whatever it is doing.
class ReaderProcess {
 public:
  explicit ReaderProcess(const QString& path) {
    m_process.setProgram(ReaderProgram());
    m_process.setWorkingDirectory(u"/"_s);
    QProcessEnvironment environment;
    environment.insert(u"LANG"_s, u"C.UTF-8"_s);
    m_process.setProcessEnvironment(environment);
    m_process.setStandardInputFile(path);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(QIODevice::ReadOnly);
    if (!m_process.waitForStarted()) {
      Refuse(
          u"Falta el programa kel-lector, que lee estos archivos. Instale de nuevo este programa, o guarde los datos "
          "como lista .csv."_s);
    }
  }
  ~ReaderProcess() {
    m_process.kill();
    m_process.waitForFinished();
  }
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  /// What has come, empty when nothing came for a moment.
  QByteArray Next() {
    constexpr int moment = 50;
    constexpr qint64 atOnce = 1 << 20;
    if (m_process.bytesAvailable() == 0) {
      m_process.waitForReadyRead(moment);
    }
    return m_process.read(atOnce);
  }
  bool HasEnded() const { return m_process.state() == QProcess::NotRunning && m_process.bytesAvailable() == 0; }

 private:
  QProcess m_process;
};

[[noreturn]] void RefuseDamaged(const FrameParser& parser, QStringView why) {
  const QString table = parser.TableName().isEmpty() ? QString() : u" en la tabla «%1»"_s.arg(parser.TableName());
  Refuse(u"El archivo está dañado, o alguien lo ha hecho para dañar: su lectura %1%2. No se ha traído nada."_s.arg(
      why, table));
}

}  // namespace

SourceListener::~SourceListener() = default;

QString ReaderProgram() {
  const QString folder = QCoreApplication::applicationDirPath();
  const QString beside = folder + u"/kel-lector"_s;
  return QFileInfo(beside).isExecutable() ? beside : folder + QStringLiteral("/" KEL_PRIVATE_FOLDER "/kel-lector");
}

void ReadForeignFile(const QString& path, SourceListener& listener, const database::Stop& stop) {
  constexpr qint64 mostSilence = 20'000;
  // A row takes some bytes of a database, and sheets have no more filled cells than these.
  constexpr qint64 mostOfASheet = 5'000'000;
  constexpr qint64 leastBytes = 4;
  FrameParser parser(listener, mostOfASheet + QFileInfo(path).size() / leastBytes);
  ReaderProcess process(path);
  QElapsedTimer silence;
  silence.start();
  while (!process.HasEnded()) {
    if (stop && stop()) {
      throw automation::Error(adodb::Stopped, u"La lectura se ha cancelado. No se ha traído nada."_s);
    }
    const QByteArray bytes = process.Next();
    if (!bytes.isEmpty()) {
      parser.Take(bytes);
      silence.restart();
    } else if (silence.elapsed() > mostSilence) {
      RefuseDamaged(parser, u"no avanza");
    }
  }
  if (parser.IsProtected()) {
    Refuse(
        u"El archivo «%1» está protegido con una contraseña. Quítesela en el programa que lo hizo y tráigalo "
        "después."_s.arg(path));
  }
  if (parser.IsOther()) {
    Refuse(
        u"«%1» es un archivo comprimido o un documento, pero no una hoja de cálculo. Ábralo en su programa y guarde la "
        "tabla como .xlsx o .ods."_s.arg(path));
  }
  if (!parser.IsWhole()) {
    RefuseDamaged(parser, u"se ha interrumpido");
  }
}

}  // namespace moving
