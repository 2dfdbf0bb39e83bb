#include "host/paper/ListFile.h"

#include <QFileDialog>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString folderKey = u"Exportar/Carpeta"_s;

QString LastFolder() {
  const QString folder = QSettings().value(folderKey).toString();
  return !folder.isEmpty() && QDir(folder).exists()
             ? folder
             : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

}  // namespace

const QList<ListFileKind>& ListFileKinds() {
  static const QList<ListFileKind> kinds = {
      {u"&Hoja de cálculo (.ods)"_s, u"ods"_s, u"Hoja de cálculo (*.ods)"_s,
       u"La abren Calc y Excel. Los códigos conservan sus ceros."_s},
      {u"Lista de &texto (.csv)"_s, u"csv"_s, u"Lista de texto (*.csv)"_s,
       u"Excel y Calc quitan los ceros a los códigos de un CSV: mejor una hoja de cálculo."_s},
      {u"&PDF"_s, u"pdf"_s, u"PDF (*.pdf)"_s,
       u"Como en papel, en hojas A4; apaisadas si las columnas no caben en hojas derechas."_s},
  };
  return kinds;
}

QString AskForListFile(QWidget& parent, const QString& title, const ListFileKind& kind) {
  QFileDialog dialog(&parent, u"Guardar «%1»"_s.arg(title), LastFolder(), kind.filter);
  dialog.setObjectName(u"dlgGuardar"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(kind.suffix);
  dialog.selectFile(QString(title).replace(u'/', u'-') + u'.' + kind.suffix);
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  QSettings().setValue(folderKey, dialog.directory().path());
  return dialog.selectedFiles().value(0);
}

}  // namespace host
