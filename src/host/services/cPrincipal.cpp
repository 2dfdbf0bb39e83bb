#include "host/services/cPrincipal.h"

#include "host/records/OfficeConnection.h"
#include "host/records/OpenConnection.h"
#include "host/services/ChangeTracking.h"
#include "host/services/ColumnWidths.h"
#include "host/services/ComboFilling.h"
#include "host/services/ErrorBox.h"
#include "host/services/Euros.h"
#include "host/services/MessageBox.h"
#include "host/services/PostcodeCoupling.h"
#include "host/services/ReadOnlyDialog.h"
#include "host/services/TaxIdentifier.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace host {
namespace {

void Require(const QObject* object) {
  if (object == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
}

adodb::Connection* ConnectionOf(QObject* services) {
  try {
    return services != nullptr ? automation::Get(services, "congestion").value<adodb::Connection*>() : nullptr;
  } catch (const automation::Error& error) {
    if (error.Number() != automation::NoSuchMember) {
      throw;
    }
    return nullptr;
  }
}

// Reports name the procedure as the component spells it.
QString WhatFailed(const QString& procedure) {
  if (procedure.contains("unload"_L1, Qt::CaseInsensitive)) {
    return u"El cuadro no se ha cerrado bien."_s;
  }
  return procedure.contains("load"_L1, Qt::CaseInsensitive) ? u"El cuadro no se ha podido abrir."_s
                                                            : u"No se ha podido terminar lo que había pedido."_s;
}

QDialog* DialogOf(QObject* control) {
  while (control != nullptr && !control->isWidgetType()) {
    control = control->parent();
  }
  return control != nullptr ? qobject_cast<QDialog*>(static_cast<QWidget*>(control)->window()) : nullptr;
}

}  // namespace

cPrincipal::cPrincipal(Session& session) : m_session(session) {}

bool cPrincipal::BloqueoRegistro(QObject*& objeto, const QString& /*formulario*/, const QString& campoID, int valorID,
                                 bool& bloqueado) {
  bloqueado = false;
  if (m_session.readOnly) {
    return true;
  }
  if (m_session.office != nullptr) {
    m_session.office->ReleaseWaiting(campoID, valorID);
  }
  try {
    m_session.lastRefusal = Locks(objeto).Take(campoID, valorID);
  } catch (const automation::Error& error) {
    if (error.Number() != adodb::DiskFull && error.Number() != adodb::DatabaseReadOnly) {
      throw;
    }
    // What can't be locked can still be looked at.
    const QString obstacle = error.Number() == adodb::DiskFull ? u"No queda sitio en el disco de la base de datos"_s
                                                               : u"La base de datos no se puede escribir"_s;
    m_session.lastRefusal = LockHolder{.keyColumn = campoID, .key = valorID, .obstacle = obstacle};
  }
  bloqueado = !m_session.lastRefusal;
  if (!bloqueado && m_session.showRefusedLocks) {
    TellOfRefusal();
  }
  return !bloqueado;
}

void cPrincipal::DesbloqueoRegistro(QObject*& objeto, const QString& /*formulario*/, const QString& campoID,
                                    int valorID) {
  try {
    Locks(objeto).Release(campoID, valorID);
  } catch (const automation::Error& error) {
    if (error.Number() != adodb::DatabaseLocked || m_session.office == nullptr) {
      throw;
    }
    m_session.office->ReleaseLater(campoID, valorID);
  }
}

void cPrincipal::BloquearControles(QObject* control) {
  Require(control);
  if (auto* widget = qobject_cast<QWidget*>(control)) {
    widget->setEnabled(false);
  } else if (auto* action = qobject_cast<QAction*>(control)) {
    action->setEnabled(false);
  } else {
    throw automation::Error(automation::TypeMismatch);
  }
  QDialog* dialog = DialogOf(control);
  if (dialog != nullptr && !ReadOnlyDialog::Holds({dialog})) {
    // The control owns it.
    new ReadOnlyDialog(*dialog, *control, m_session);
  }
}

void cPrincipal::establecercontrolcambioformulario(const QObjectList& controles) {
  RememberControls(controles);
}

bool cPrincipal::controlcambioformulario(const QObjectList& controles) {
  return !ReadOnlyDialog::Holds(controles) && ControlsChanged(controles);
}

void cPrincipal::SeleccionarTexto(QObject* control) {
  Require(control);
  if (auto* line = qobject_cast<QLineEdit*>(control)) {
    line->selectAll();
  } else if (auto* text = qobject_cast<QTextEdit*>(control)) {
    text->selectAll();
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(control)) {
    plain->selectAll();
  } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(control)) {
    spin->selectAll();
  } else if (const QComboBox& combo = ComboFrom(control); combo.lineEdit() != nullptr) {
    combo.lineEdit()->selectAll();
  }
}

void cPrincipal::SeleccionarFila(QObject* rejilla, int fila) {
  Require(rejilla);
  auto* view = qobject_cast<QAbstractItemView*>(rejilla);
  if (view == nullptr) {
    throw automation::Error(automation::TypeMismatch);
  }
  if (view->model() == nullptr || fila < -1 || fila >= view->model()->rowCount(view->rootIndex())) {
    throw automation::Error(automation::SubscriptOutOfRange);
  }
  if (fila == -1) {
    view->selectionModel()->clear();
    return;
  }
  const QModelIndex current = view->currentIndex();
  const int column = current.isValid() ? current.column() : 0;
  view->selectionModel()->setCurrentIndex(view->model()->index(fila, column, view->rootIndex()),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void cPrincipal::SalvarAnchos(QObject* rejilla, const QString& clave, const QString& formulario) {
  SaveColumnWidths(m_session.settingsFile, rejilla, clave, formulario);
}

void cPrincipal::CargarAnchos(QObject* rejilla, const QString& clave, const QString& formulario) {
  LoadColumnWidths(m_session.settingsFile, rejilla, clave, formulario);
}

void cPrincipal::VerError(const QString& procedimiento, const QString& entidad, const QString& componente) {
  const automation::ErrObject& error = automation::Err();
  const QString description =
      error.Number == 0 ? u"Se ha producido un error del que no se conocen más datos."_s : error.Description;
  const QStringList origin{componente, entidad, procedimiento};
  ShowError(QApplication::activeWindow(), m_session.title, WhatFailed(procedimiento),
            automation::Error(error.Number, description, origin.join(u" / "_s)));
}

int cPrincipal::CIF_NIF_Valido(const QString& texto, QString& tipo, QString& control) {
  const TaxIdentifier identifier = CheckTaxIdentifier(texto);
  tipo = KindName(identifier.kind);
  control = identifier.control;
  return static_cast<int>(identifier.verdict);
}

QVariant cPrincipal::Validar_NIF(const QString& texto) {
  return static_cast<int>(CheckTaxIdentifier(texto).verdict);
}

QString cPrincipal::FormatearAEuros(const QVariant& importe) {
  return FormatEuros(importe);
}

void cPrincipal::VerificarEuros(int& tecla, const QVariant& caja, int inicio, int longitud) {
  QString text;
  if (const auto* line = qobject_cast<QLineEdit*>(caja.value<QObject*>())) {
    text = line->text();
    inicio = line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
    longitud = line->selectionLength();
  } else {
    text = caja.toString();
  }
  const int typed = tecla;
  tecla = FilterEuroKey(typed, text, inicio, longitud);
  if (tecla == 0 && typed != 0) {
    QApplication::beep();
  }
}

void cPrincipal::SeleccionarCP_Provincia(QObject*& cambiado, QObject*& acoplado, adodb::Connection* conexion) {
  Require(cambiado);
  Require(acoplado);
  adodb::Connection& connection = Opened(conexion != nullptr ? conexion : m_session.connection);
  if (auto* changedBox = qobject_cast<QLineEdit*>(cambiado)) {
    SelectProvinceOfPostcode(*changedBox, ComboFrom(acoplado), connection);
  } else if (auto* coupledBox = qobject_cast<QLineEdit*>(acoplado)) {
    SuggestPostcodeOfProvince(ComboFrom(cambiado), *coupledBox, connection);
  } else {
    throw automation::Error(automation::TypeMismatch);
  }
}

RecordLocks cPrincipal::Locks(QObject* services) const {
  adodb::Connection* connection = ConnectionOf(services);
  return connection != nullptr
             ? RecordLocks(Opened(connection), m_session.userId, m_session.userName, &m_session.lockMemory)
             : m_session.Locks();
}

void cPrincipal::TellOfRefusal() const {
  ShowMessage(QMessageBox::Information,
              m_session.lastRefusal->Description() +
                  u".\n\nSe abre solo para consulta: no podrá guardar cambios hasta que quede libre."_s,
              m_session.title);
}

}  // namespace host
