#include "MailingOffice.h"

#include "database/Database.h"
#include "platform/adodb/Statement.h"

#include <QBuffer>
#include <QImage>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QByteArray Picture() {
  QImage picture(600, 200, QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      picture.setPixel(x, y, qRgb(x * 255 / picture.width(), y, (x * y) % 256));
    }
  }
  QByteArray png;
  QBuffer buffer(&png);
  picture.save(&buffer, "PNG");
  return "{\\pict\\pngblip\\picw600\\pich200\\picwgoal4500\\pichgoal1500 " + png.toHex() + "}";
}

QByteArray Letter() {
  const QByteArray sentence =
      "Gracias a personas como usted la Fundaci\\'f3n ha podido atender este a\\'f1o a m\\'e1s de doscientas familias, "
      "abrir un comedor nuevo y conceder treinta becas de estudio. ";
  return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}\\f0\\fs24 " + Picture() +
         "\\par\\pard\\qr Madrid, [wd, dd de mmm de aaaa]\\par\\pard\\ql [Tratamiento] [Nombre y apellidos]\\par "
         "[Direccion]\\par [CP] [Poblacion]\\par [Provincia]\\par [Pais]\\par\\par [Encabezado]\\par\\pard\\qj {\\b "
         "[NIF]} " +
         sentence.repeated(4) + "\\par {\\i [Cod. Benefactor]} " + sentence.repeated(3) + "\\par}";
}

}  // namespace

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
                 QString::fromLatin1(Letter()));
  for (const auto& [name, conditions] : {std::pair(u"todas"_s, QString()), {u"algunas"_s, u"Cobrador=1"_s}}) {
    adodb::Execute(*connection, u"INSERT INTO Selecciones (Nombre, Condiciones, Compartida) VALUES ('{}', '{}', True)",
                   name, conditions);
  }
  transaction.Commit();
}
