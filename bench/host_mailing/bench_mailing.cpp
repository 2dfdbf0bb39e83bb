// Letters and labels for 10,000 invented people. Each measurement is a process of its own, so that its peak of memory
// is its own, too; figures are processor time and peak, and their ratios.

#include "database/Database.h"
#include "documents/rtf/Rtf.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/pieces/ReadMailing.h"
#include "host_mailing/Anchors.h"
#include "platform/adodb/Statement.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <cstdio>
#include <string>

using namespace Qt::StringLiterals;

using bench::Cost;

namespace {

constexpr int people = 10000;
constexpr int some = 1000;

/// Colours that run into each other.
QImage Drawing(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      line[x] = qRgb(x * 255 / picture.width(), y % 256, (x * y) % 256);
    }
  }
  return picture;
}

/// Paper with the unevenness of a scanner, and a name and lines on it.
QImage Scan(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  unsigned noise = 1;
  for (int y = 0; y < picture.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      noise = noise * 1103515245 + 12345;
      const int grey = 253 + static_cast<int>(noise >> 31);
      line[x] = qRgb(grey, grey, grey);
    }
  }
  QPainter painter(&picture);
  painter.setFont(QFont(u"Liberation Serif"_s, size.width() / 50));
  painter.drawText(size.width() / 10, size.height() / 15, u"Fundación Puente de Luz"_s);
  painter.fillRect(size.width() / 10, size.height() / 12, size.width() * 8 / 10, size.height() / 300, Qt::darkBlue);
  return picture;
}

/// `goal`: twips.
QByteArray Picture(const QImage& picture, const char* format, const QByteArray& word, QSize goal) {
  QByteArray content;
  QBuffer buffer(&content);
  picture.save(&buffer, format);
  return "{\\pict\\" + word + "\\picw" + QByteArray::number(picture.width()) + "\\pich" +
         QByteArray::number(picture.height()) + "\\picwgoal" + QByteArray::number(goal.width()) + "\\pichgoal" +
         QByteArray::number(goal.height()) + ' ' + content.toHex() + "}";
}

/// An A4 sheet at 600 dots per inch, printed as large as the margins let it be.
QByteArray ScannedSheet() {
  return Picture(Scan({4960, 7016}), "JPEG", "jpegblip", {9000, 12730});
}

QByteArray Letter(const QByteArray& picture) {
  const QByteArray sentence =
      "Gracias a personas como usted la Fundaci\\'f3n ha podido atender este a\\'f1o a m\\'e1s de doscientas familias, "
      "abrir un comedor nuevo y conceder treinta becas de estudio. ";
  return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}\\f0\\fs24 " + picture +
         "\\par\\pard\\qr Madrid, [wd, dd de mmm de aaaa]\\par\\pard\\ql [Tratamiento] [Nombre y apellidos]\\par "
         "[Direccion]\\par [CP] [Poblacion]\\par [Provincia]\\par [Pais]\\par\\par [Encabezado]\\par\\pard\\qj {\\b "
         "[NIF]} " +
         sentence.repeated(4) + "\\par {\\i [Cod. Benefactor]} " + sentence.repeated(3) + "\\par}";
}

QByteArray UsualLetter() {
  return Letter(Picture(Drawing({600, 200}), "PNG", "pngblip", {4500, 1500}));
}

void Fill(const QString& connectionString) {
  database::PrepareDatabase(connectionString, database::Content::Reference);
  const auto connection = database::CreateConnection(connectionString);
  connection->Open();
  adodb::Transaction transaction(*connection);
  adodb::Execute(*connection, u"INSERT INTO Cobradores (Nombre) VALUES ('Remedios')");
  for (int i = 0; i < people; ++i) {
    adodb::Execute(
        *connection,
        u"INSERT INTO Colaboradores (Tratamiento, Nombre, Apellido1, Apellido2, NIF, Direccion, Poblacion, CP, "
        u"CodProvincia, codpais, CodEncabezado, CodCobrador) VALUES ('D.ª', 'Adela', 'Abadía', "
        u"'Número {0}', '99{0}', 'Calle Mayor, {0}', 'Alcalá de Henares', '28801', 28, 35, 1, {1})",
        QString::number(i), i < some ? 1 : 2);
  }
  adodb::Execute(
      *connection,
      u"INSERT INTO ETIQUETAS (NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, ALTOETIQUETA, ANCHOETIQUETA, ENVIOPOSTAL) "
      u"VALUES ('A4', 24, 3, '3,7', '7', True)");
  const char16_t* const fields[] = {u"TRATAMIENTO", u"NOMBRE",    u"APELLIDO1", u"APELLIDO2",
                                    u"DIRECCION",   u"POBLACION", u"CP"};
  int position = 0;
  for (const char16_t* field : fields) {
    ++position;
    adodb::Execute(
        *connection,
        u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Linea, Orden, codTipoCampoEtiqueta) VALUES (1, "
        u"'[COLABORADORES].[{}]', {}, {}, 1)",
        QString::fromUtf16(field), position < 5 ? 1 : position - 3, position);
  }
  adodb::Execute(*connection,
                 u"INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES "
                 u"('Carta', '{}', '2,5', '2,5')",
                 QString::fromLatin1(UsualLetter()));
  adodb::Execute(*connection,
                 u"INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES "
                 u"('Membrete', '{}', '2,5', '2,5')",
                 QString::fromLatin1(Letter(ScannedSheet())));
  for (const auto& [name, conditions] : {std::pair(u"todas"_s, QString()), {u"algunas"_s, u"Cobrador=1"_s}}) {
    adodb::Execute(*connection, u"INSERT INTO Selecciones (Nombre, Condiciones, Compartida) VALUES ('{}', '{}', True)",
                   name, conditions);
  }
  transaction.Commit();
}

void Make(const QString& what, bool all, const QString& connectionString, const QString& target) {
  host::RunControl control;
  host::LetterWish letters;
  letters.letter = what == u"scanned"_s ? 2 : 1;
  letters.moment = QDateTime::currentDateTime();
  letters.selection = all ? u"todas"_s : u"algunas"_s;
  if (what == u"labels"_s) {
    host::LabelWish labels;
    labels.sheet = 1;
    labels.selection = letters.selection;
    host::WritePdf(*host::ReadLabels(connectionString, labels, 1), target, control);
    return;
  }
  const auto mailing = host::ReadLetters(connectionString, letters, 1);
  if (what == u"letters"_s || what == u"scanned"_s) {
    host::WritePdf(*mailing, target, control);
  } else if (what == u"pdfs"_s) {
    host::WritePdfFiles(*mailing, target, control);
  } else if (what == u"rtfs"_s) {
    host::WriteFiles(
        *mailing, target, u".rtf"_s, [&](int letter) { return rtf::Write(*mailing->Filled(letter)); }, control);
  }
}

Cost Told(const char* what, int count, const Cost& cost) {
  std::printf("%-18s %6d   %7.2f s   %6.1f MB\n", what, count, cost.seconds, cost.megabytes);
  std::fflush(stdout);
  return cost;
}

/// Runs this program again for one piece of work.
Cost Measure(const char* what, bool all, const QTemporaryDir& folder) {
  const QString target = folder.filePath(QString::fromLatin1(what) + (all ? u"10"_s : u"1"_s));
  return Told(what, all ? people : some,
              bench::CostOf(
                  {u"/proc/self/exe"_s, QString::fromLatin1(what), all ? u"all"_s : u"some"_s, folder.path(), target}));
}

/// In memory where that can be: what a disk's file system does for a thousand files is not what is compared.
QString Place() {
  const QString memory = u"/dev/shm"_s;
  return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/bench_mailing-XXXXXX"_s;
}

void Compare(const char* what, double value, double limit) {
  std::printf("%-48s %7.2f   at most %g\n", what, value, limit);
}

void CompareElsewhere(const QTemporaryDir& folder, const Cost& labels, const Cost& letters) {
  if (const auto cost = bench::LabelsElsewhere(folder.path(), some)) {
    Told("gLabels, labels", some, *cost);
    Compare("10,000 labels to its 1,000", labels.seconds / cost->seconds, 1);
  }
  if (const auto cost = bench::LettersElsewhere(folder.path(), UsualLetter(), some)) {
    Told("LibreOffice, merge", some, *cost);
    Compare("1,000 letters to its 1,000", letters.seconds / cost->seconds, 0.05);
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const auto database = [](const QString& folder) { return database::ConnectionStringForFile(folder + u"/kel.db"_s); };
  if (argc > 4) {
    Make(QString::fromLatin1(argv[1]), std::string(argv[2]) == "all", database(QString::fromLocal8Bit(argv[3])),
         QString::fromLocal8Bit(argv[4]));
    return 0;
  }
  const QTemporaryDir folder(Place());
  std::printf("files in %s\n", qPrintable(folder.path()));
  Fill(database(folder.path()));
  const Cost start = Measure("nothing", false, folder);
  const Cost read = Measure("nothing", true, folder);
  const Cost labels = Measure("labels", true, folder);
  const Cost letters = Measure("letters", false, folder);
  const Cost allLetters = Measure("letters", true, folder);
  const Cost scanned = Measure("scanned", false, folder);
  const Cost pdfs = Measure("pdfs", false, folder);
  const Cost rtfs = Measure("rtfs", false, folder);
  Compare("10,000 labels, seconds", labels.seconds, 2);
  Compare("10,000 labels, MB over the start", labels.megabytes - start.megabytes, 32);
  Compare("10,000 letters to 1,000", allLetters.seconds / letters.seconds, 11);
  Compare("their peak, MB over that of 1,000", allLetters.megabytes - letters.megabytes, 16);
  Compare("10,000 letters, MB over their people", allLetters.megabytes - read.megabytes, 32);
  Compare("1,000 with a scanned sheet to 1,000", scanned.seconds / letters.seconds, 1.5);
  Compare("a PDF for each person to one PDF", pdfs.seconds / letters.seconds, 2);
  Compare("an RTF for each person to one PDF", rtfs.seconds / letters.seconds, 0.3);
  CompareElsewhere(folder, labels, letters);
  return 0;
}
