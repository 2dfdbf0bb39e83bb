#include "tour/Walks.h"

#include <QAction>
#include <QColorDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QTest>
#include <QTextEdit>

#include <array>
#include <stdexcept>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr std::array markers{
    "mnuEmergenteFechaLarga",        "mnuEmergenteTratamiento",  "mnuEmergenteNombreCompleto",
    "mnuEmergenteDireccion",         "mnuEmergenteCP",           "mnuEmergentePoblacion",
    "mnuEmergenteProvincia",         "mnuEmergenteEncabezado",   "mnuEmergenteImporteDonativo",
    "mnuEmergenteFinalidadDonativo", "mnEmergenteFechaDonativo", "mnuModelo182DeduccionFisica"};

/// A person at the editor.
class Writer {
 public:
  explicit Writer(const DialogUser& dialog) : m_dialog(dialog), m_letter(dialog.Find<QTextEdit>("rtfCarta")) {}

  void Text(const QString& text) const { m_dialog.Keys("rtfCarta", text); }
  void Field(const char* item) const { Do(item); }
  void Line() const {
    Text({});
    QTest::keyClick(m_letter, Qt::Key_Return);
  }
  /// Writes with a tool button pressed.
  void With(const char* button, const QString& text) const {
    m_dialog.Press(button);
    Text(text);
    m_dialog.Press(button);
  }
  void Do(const char* item) const { m_dialog.Find<QAction>(item)->trigger(); }
  void Press(const char* button) const { m_dialog.Press(button); }
  QString Shown() const { return m_letter->toPlainText(); }
  QTextEdit* Letter() const { return m_letter; }

 private:
  const DialogUser& m_dialog;
  QTextEdit* m_letter;
};

void WriteHead(const Writer& writer) {
  writer.Press("tlbFormato_right");
  writer.Text(u"Madrid, "_s);
  writer.Field(markers[0]);
  writer.Line();
  writer.Press("tlbFormato_left");
  for (const char* field : {markers[1], markers[2]}) {
    writer.Field(field);
    writer.Text(u" "_s);
  }
  writer.Line();
  writer.Field(markers[3]);
  writer.Line();
  for (const char* field : {markers[4], markers[5]}) {
    writer.Field(field);
    writer.Text(u" "_s);
  }
  writer.Text(u"("_s);
  writer.Field(markers[6]);
  writer.Text(u")"_s);
  writer.Line();
  writer.Line();
}

void WriteBody(const DialogUser& dialog, const Writer& writer) {
  dialog.Choose("cboFuentes", u"DejaVu Sans"_s);
  dialog.Choose("cboTamaño", u"16"_s);
  writer.Press("tlbFormato_center");
  writer.Press("tlbFormato_color_letra");
  writer.With("tlbFormato_negrita", u"Gracias por su ayuda"_s);
  writer.Line();
  writer.Press("tlbFormato_left");
  dialog.Choose("cboFuentes", u"Times New Roman"_s);
  dialog.Choose("cboTamaño", u"12"_s);
  writer.Press("tlbFormato_color_letra");
  writer.Field(markers[7]);
  writer.Line();
  writer.Text(u"Le agradecemos de corazón su donativo de "_s);
  writer.Press("tlbFormato_negrita");
  writer.Field(markers[8]);
  writer.Press("tlbFormato_negrita");
  writer.Text(u" euros para "_s);
  writer.With("tlbFormato_cursiva", u"la casa d'acolliment"_s);
  writer.Text(u", que sigue abierta "_s);
  writer.With("tlbFormato_subrayado", u"todos los días del año"_s);
  writer.Text(u" gracias a personas como usted. Con él hemos podido atender:"_s);
  writer.Line();
  writer.Press("tlbFormato_desordenada");
  for (const auto& item : {u"alimentos"_s, u"ropa de abrigo"_s, u"atención médica"_s}) {
    writer.Text(item);
    writer.Line();
  }
  writer.Line();
  writer.Press("tlbFormato_outdent");
  writer.Text(u"Finalidad:\t"_s);
  writer.Field(markers[9]);
  writer.Line();
  writer.Text(u"Recibido:\t"_s);
  writer.Field(markers[10]);
  writer.Line();
  writer.Text(u"Deducción:\t"_s);
  writer.Field(markers[11]);
  writer.Line();
  writer.Press("tlbFormato_indent");
  writer.Text(u"Reciba un cordial saludo."_s);
}

void Colour(Tour& tour, Qt::GlobalColor colour) {
  tour.Windows().On("dlgCarta", [colour](const DialogUser& dialog) {
    static_cast<QColorDialog*>(dialog.Dialog())->setCurrentColor(colour);
    dialog.Dialog()->accept();
  });
}

// Writes a letter with every kind of format; returns what it said.
void Write(Tour& tour, QString& written) {
  Colour(tour, Qt::darkBlue);
  Colour(tour, Qt::black);
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Windows().AnswerInput(u"Carta d'agraïment"_s);
  tour.Windows().On("frmCartaModelo", [&](const DialogUser& dialog) {
    const Writer writer(dialog);
    WriteHead(writer);
    WriteBody(dialog, writer);
    QTextCursor body = writer.Letter()->document()->find(u"Le agradecemos"_s);
    writer.Letter()->setTextCursor(body);
    writer.Press("tlbFormato_Justify");
    tour.Picture(dialog, u"frmCartaModelo"_s);
    written = writer.Shown();
    dialog.Press("cmdComprobar");
    writer.Do("mnuArchivoGuardar");
  });
  tour.Step(u"Cartas modelo: escribir con todos los formatos"_s,
            {.node = node.CartasModelo(), .action = action.Agregar()},
            u"SELECT Nombre, MargenIzquierdo, MargenDerecho FROM CartasModelo WHERE Nombre='Carta d''agraïment'"_s,
            {u"Carta d'agraïment|3|3"_s});
}

void Require(bool condition, const char* what) {
  if (!condition) {
    throw std::runtime_error(what);
  }
}

// Opens it again, finds it as it was, prints it and saves it under another name.
void ReopenPrintAndSaveAs(Tour& tour, const QString& written) {
  const int id = tour.Id(u"SELECT IDCartaModelo FROM CartasModelo WHERE Nombre='Carta d''agraïment'");
  tour.Windows().On("dlgCarta", [&](const DialogUser& dialog) {
    auto* printing = static_cast<QPrintDialog*>(dialog.Dialog());
    printing->printer()->setOutputFormat(QPrinter::PdfFormat);
    printing->printer()->setOutputFileName(tour.File(u"carta.pdf"_s));
    printing->done(QDialog::Accepted);
  });
  tour.Windows().AnswerInput(u"Carta d'agraïment (copia)"_s);
  tour.Windows().On("frmCartaModelo", [&](const DialogUser& dialog) {
    const Writer writer(dialog);
    Require(writer.Shown() == written, "the letter is another one");
    writer.Press("tlbEstandar_imprimir");
    dialog.Paste("txtMargenIzdo", u"2.5"_s);
    tour.Picture(dialog, u"frmCartaModelo-margen"_s);
    writer.Do("mnuArchivoGuardarComo");
  });
  tour.Step(
      u"Cartas modelo: abrir, imprimir, guardar como"_s,
      {.node = node.CartasModelo(), .action = action.Modificar(), .id = id},
      u"SELECT Nombre, MargenIzquierdo FROM CartasModelo WHERE Nombre LIKE 'Carta d''agraïment%' ORDER BY Nombre"_s,
      {u"Carta d'agraïment|3"_s, u"Carta d'agraïment (copia)|2,5"_s});
  Require(tour.Rows(StatementText(u"SELECT Contenido FROM CartasModelo WHERE IDCartaModelo={}", id)) ==
              tour.Rows(u"SELECT Contenido FROM CartasModelo WHERE Nombre='Carta d''agraïment (copia)'"_s),
          "the copy differs");
}

}  // namespace

void WalkLetterEditor(Tour& tour) {
  QString written;
  Write(tour, written);
  ReopenPrintAndSaveAs(tour, written);
}

}  // namespace tour
