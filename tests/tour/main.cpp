#include "tour/Walks.h"

#include "host/look/Look.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"

#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QTemporaryDir>
#include <QTranslator>

#include <cstdio>

using namespace Qt::StringLiterals;

// kel-tour LIBRARY FOLDER [--oscuro]: walks through the dialogs of the component library and leaves the pictures in the
// folder, in dark colours where that is asked.
int main(int argc, char** argv) {
  const QTemporaryDir registry;
  qputenv("KEL_CLASES", registry.filePath(u"clases.ini"_s).toUtf8());
  qputenv("XDG_DATA_HOME", registry.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", registry.path().toUtf8());
  QApplication application(argc, argv);
  const bool dark = argc == 4 && qstrcmp(argv[3], "--oscuro") == 0;
  if (argc != 3 && !dark) {
    std::fputs("Uso: kel-tour BIBLIOTECA CARPETA [--oscuro]\n", stderr);
    return 2;
  }
  host::UseLook({.colours = dark ? host::Look::Colours::Dark : host::Look::Colours::Light});
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
  QTranslator translator;
  if (translator.load(u"/usr/share/qt6/translations/qtbase_es.qm"_s)) {
    QApplication::installTranslator(&translator);
  }
  try {
    if (!automation::ComponentLibrary(QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1]))).Register()) {
      std::fputs("No se pudo registrar el componente.\n", stderr);
      return 1;
    }
    tour::Tour walk(QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[2])));
    for (const auto part :
         {tour::WalkReference, tour::WalkBanking, tour::WalkRemittances, tour::WalkTaxes, tour::WalkPublications,
          tour::WalkLabels, tour::WalkLetters, tour::WalkLetterEditor, tour::WalkMailing, tour::WalkMoving,
          tour::WalkUsers, tour::WalkDeletions, tour::WalkWindow}) {
      part(walk);
    }
    return walk.Report() ? 0 : 1;
  } catch (const automation::Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
