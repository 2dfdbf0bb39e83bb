#include "letters/editor/ReplaceDialog.h"

#include "letters/editor/LetterEdit.h"
#include "letters/editor/LetterSearch.h"
#include "platform/text/Counted.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

QString Times(int count) {
  return texts::Counted(count, u"vez"_s, u"veces"_s);
}

QLineEdit* NewBox(const QString& name, const QString& text, QWidget* parent) {
  auto* box = new QLineEdit(text, parent);
  box->setObjectName(name);
  return box;
}

}  // namespace

ReplaceDialog::ReplaceDialog(LetterEdit& letter, const QString& text, QWidget* parent)
    : QDialog(parent),
      m_letter(letter),
      m_sought(NewBox(u"txtBuscar"_s, text, this)),
      m_other(NewBox(u"txtReemplazo"_s, {}, this)),
      m_count(new QLabel(this)) {
  setWindowTitle(u"Reemplazar"_s);
  auto* rows = new QFormLayout(this);
  rows->addRow(u"&Buscar:"_s, m_sought);
  rows->addRow(u"&Por:"_s, m_other);
  m_count->setObjectName(u"lblVeces"_s);
  m_count->setTextFormat(Qt::PlainText);
  rows->addRow(m_count);
  AddButton("cmdSiguiente", u"Buscar &siguiente"_s, &ReplaceDialog::FindNext);
  AddButton("cmdReemplazar", u"&Reemplazar"_s, &ReplaceDialog::ReplaceOne);
  AddButton("cmdTodo", u"Reemplazar &todo"_s, &ReplaceDialog::ReplaceAll);
  AddButton("cmdCerrar", u"&Cerrar"_s, &ReplaceDialog::accept);
  connect(m_sought, &QLineEdit::textChanged, this, [this] { ShowCount(); });
  m_sought->selectAll();
  ShowCount();
}

void ReplaceDialog::AddButton(const char* name, const QString& text, void (ReplaceDialog::*work)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  connect(button, &QPushButton::clicked, this, work);
  static_cast<QFormLayout*>(layout())->addRow(button);
}

QString ReplaceDialog::SoughtText() const {
  return m_sought->text();
}

void ReplaceDialog::FindNext() {
  const QTextCursor found = FindNextText(m_letter.textCursor(), m_sought->text());
  if (!found.isNull()) {
    m_letter.setTextCursor(found);
  }
}

void ReplaceDialog::ReplaceOne() {
  if (IsFound(m_letter.textCursor(), m_sought->text())) {
    m_letter.TypeText(m_other->text());
  }
  FindNext();
  ShowCount();
}

void ReplaceDialog::ReplaceAll() {
  const int count = ReplaceText(*m_letter.document(), m_sought->text(), m_other->text());
  ShowCount(u"Reemplazado %1. "_s.arg(Times(count)));
}

void ReplaceDialog::ShowCount(const QString& done) {
  const QString text = m_sought->text();
  const int count = CountText(*m_letter.document(), text);
  m_count->setText(done + (text.isEmpty() ? u"Escriba el texto que busca."_s
                           : count == 0   ? u"No está en la carta."_s
                                          : u"Está %1 en la carta."_s.arg(Times(count))));
}

}  // namespace letters
