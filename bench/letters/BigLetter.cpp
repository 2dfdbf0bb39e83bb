#include "letters/BigLetter.h"

namespace bench {

namespace {

const QByteArray header =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang3082{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\froman\\fcharset0 "
    "Times New "
    "Roman;}{\\f2\\fnil\\fcharset2 Symbol;}}\r\n{\\colortbl ;\\red0\\green0\\blue255;\\red192\\green0\\blue0;}\r\n"
    "\\viewkind4\\uc1";

/// Nine paragraphs, among them a list of three items.
QByteArray Unit(int number) {
  const QByteArray n = QByteArray::number(number);
  return "\\pard\\qc\\cf1\\b\\f0\\fs28 Campa\\'f1a de oto\\'f1o n.\\'ba " + n +
         "\\cf0\\b0\\par\r\n"
         "\\pard\\fi360\\li0\\sa120\\qj\\f1\\fs22 Estimado colaborador: su aportaci\\'f3n de este a\\'f1o ha hecho "
         "posible que "
         "la casa de acogida contin\\'fae \\i abierta\\i0  todos los d\\'edas del a\\'f1o, tambi\\'e9n los festivos, y "
         "que nadie quede sin techo ni sin comida.\\par\r\n"
         "Le enviamos el \\b certificado\\b0  de su donativo, v\\'e1lido para la declaraci\\'f3n, con el n\\'famero "
         "\\cf2 " +
         n +
         "\\cf0  del libro registro de la asociaci\\'f3n, que puede consultar cuando quiera en nuestra sede.\\par\r\n"
         "\\pard{\\pntext\\f2\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf2\\pnindent0{\\pntxtb\\'B7}}\\fi-360\\li720 "
         "Alimentos\\par\r\n"
         "{\\pntext\\f2\\'B7\\tab}Ropa de \\ul abrigo\\ulnone\\par\r\n"
         "{\\pntext\\f2\\'B7\\tab}Atenci\\'f3n m\\'e9dica\\par\r\n"
         "\\pard\\tx2880\\tqr\\tx8640 Importe\\tab " +
         n +
         ",50 \\'80\\tab 31/12\\par\r\n"
         "\\pard\\li720\\ri720 Reciba un cordial saludo.\\par\r\n"
         "\\pard\\qr Madrid, \\u8212? el tesorero\\par\r\n";
}

}  // namespace

QByteArray BigLetter(qsizetype bytes) {
  QByteArray letter = header;
  letter.reserve(bytes + 2048);
  for (int number = 1; letter.size() < bytes; ++number) {
    letter += Unit(number);
  }
  return letter + "}\r\n";
}

QByteArray OnePage() {
  QByteArray letter = header;
  for (int number = 1; number <= 4; ++number) {
    letter += Unit(number);
  }
  return letter + "}\r\n";
}

QByteArray LongTable(int rows) {
  QByteArray letter = header + "\\pard Cuotas\\par\r\n";
  for (int number = 1; number <= rows; ++number) {
    const QByteArray n = QByteArray::number(number);
    letter += "\\trowd\\trgaph70\\clbrdrb\\brdrs\\brdrw10\\cellx1000\\cellx4500\\cellx7000\\cellx8500\\pard\\intbl " +
              n + "\\cell Colaborador\\cell recibo de 2024\\cell\\qr 12,50\\cell\\row\r\n";
  }
  return letter + "\\pard Total\\par\r\n}\r\n";
}

}  // namespace bench
