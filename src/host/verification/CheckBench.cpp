#include "host/verification/CheckBench.h"

#include "database/Database.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QMetaMethod>

#include <chrono>

namespace host {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

[[noreturn]] void RaiseWrongType(const QVariant& answer, const QString& expected) {
  const QString given = answer.isValid() ? QString::fromLatin1(answer.typeName()) : u"nada"_s;
  throw Fault{u"contesta %1 (%2) donde el contrato pide %3"_s.arg(given, answer.toString(), expected)};
}

bool IsText(const QVariant& value) {
  return value.typeId() == QMetaType::QString;
}

// What the user could read in it.
QString TextsOf(const QWidget& window) {
  QStringList texts{window.windowTitle()};
  if (const auto* box = qobject_cast<const QMessageBox*>(&window)) {
    texts << box->text() << box->informativeText() << box->detailedText();
  }
  for (const QWidget* part : window.findChildren<QWidget*>()) {
    for (const char* property : {"text", "plainText"}) {
      texts << part->property(property).toString();
    }
  }
  return texts.join(u'\n');
}

}  // namespace

CheckBench::CheckBench()
    : box(new QLineEdit(u"texto"_s, &window)),
      combo(new QComboBox(&window)),
      grid(new QTableWidget(3, 2, &window)),
      button(new QPushButton(&otherWindow)) {
  box->setObjectName(u"txtPrueba"_s);
  combo->setObjectName(u"cboPrueba"_s);
  grid->setObjectName(u"grdPrueba"_s);
  button->setObjectName(u"cmdPrueba_0"_s);
  const QString target = database::ConnectionStringForFile(m_folder.filePath(u"prueba.db"_s));
  database::PrepareDatabase(target, database::Content::Demonstration);
  m_connection = database::CreateConnection(target);
  m_connection->Open();
  QObject::connect(&m_closer, &QTimer::timeout, [this] { CloseWindows(); });
  m_closer.start(20ms);
}

void CheckBench::CloseWindows() {
  QWidget* shown = QApplication::activeModalWidget();
  for (QWidget* candidate : QApplication::topLevelWidgets()) {
    shown = shown == nullptr && candidate->isVisible() ? candidate : shown;
  }
  if (shown == nullptr) {
    return;
  }
  ++m_windowsShown;
  m_textsShown = TextsOf(*shown);
  // A box whose buttons all agree can't be closed, but it can be done with.
  if (auto* dialog = qobject_cast<QDialog*>(shown)) {
    dialog->done(QDialog::Rejected);
  } else {
    shown->close();
  }
}

int CheckBench::WindowsShown() {
  CloseWindows();
  return m_windowsShown;
}

void Require(bool holds, const QString& text) {
  if (!holds) {
    throw Fault{text};
  }
}

int Number(const QVariant& answer) {
  if (IsText(answer) || !automation::IsNumeric(answer)) {
    RaiseWrongType(answer, u"un número"_s);
  }
  return automation::CLng(answer);
}

bool Boolean(const QVariant& answer) {
  if (answer.typeId() != QMetaType::Bool && (IsText(answer) || !automation::IsNumeric(answer))) {
    RaiseWrongType(answer, u"un valor lógico"_s);
  }
  return automation::CBool(answer);
}

QString String(const QVariant& answer) {
  if (!IsText(answer)) {
    RaiseWrongType(answer, u"un texto"_s);
  }
  return answer.toString();
}

void RequireReference(const QObject& object, const char* method, int parameters, int position) {
  const QMetaObject* metaObject = object.metaObject();
  for (int i = metaObject->methodCount() - 1; i >= 0; --i) {
    const QMetaMethod candidate = metaObject->method(i);
    if (candidate.parameterCount() == parameters && qstricmp(candidate.name(), method) == 0) {
      const QByteArray type = candidate.parameterTypes()[position];
      Require(
          type.endsWith('&'),
          u"el argumento %1 («%2») tiene que ser por referencia"_s.arg(position + 1).arg(QString::fromLatin1(type)));
      return;
    }
  }
}

QString FaultOf(const MemberCheck& check) {
  try {
    check.run();
    return {};
  } catch (const Fault& fault) {
    return fault.text;
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    switch (error.Number()) {
      case automation::NoSuchMember:
        return u"falta"_s;
      case automation::ArgumentNotOptional:
      case automation::WrongNumberOfArguments:
        return u"no tiene los argumentos del contrato, o no se puede escribir (error %1)"_s.arg(error.Number());
      case automation::TypeMismatch:
        return u"no toma los tipos de argumentos del contrato (error 13: %1)"_s.arg(error.Description());
      default:
        return u"falla con el error %1: %2"_s.arg(error.Number()).arg(error.Description());
    }
  }
}

}  // namespace host
