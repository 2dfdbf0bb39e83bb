#include "MailingOffice.h"

#include "database/Database.h"
#include "platform/adodb/Statement.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

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

}  // namespace

QByteArray UsualLetter() {
  return Letter(Picture(Drawing({600, 200}), "PNG", "pngblip", {4500, 1500}));
}

void FillWithPeople(const QString& connectionString) {
  database::PrepareDatabase(connectionString, database::Content::Reference);
  const auto connection = database::CreateConnection(connectionString);
  connection->Open();
  adodb::Transaction transaction(*connection);
  adodb::Execute(*connection, u"INSERT INTO Cobradores (Nombre) VALUES ('Remedios')");
  for (int i = 0; i < everybody; ++i) {
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
