#include "framework/FormularioMantenimiento.h"

#include "framework/CargarTextosFormulario.h"
#include "framework/FocusWatch.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"

#include <QAbstractButton>
#include <QIcon>
#include <QTableView>

#include <optional>
#include <utility>

namespace {

// Runs one step of several that are all tried; keeps the first error.
template <typename Step>
void Intentar(std::optional<automation::Error>& error, Step step) {
  try {
    step();
  } catch (...) {
    if (!error) {
      error = automation::CurrentError();
    }
  }
}

}  // namespace

FormularioMantenimiento::FormularioMantenimiento(FichaFormulario ficha)
    : Formulario(ficha.nombre), m_ficha(std::move(ficha)) {}

void FormularioMantenimiento::Form_Load() {
  m_bloqueado = false;
  m_devuelto = false;
  m_errorCarga = true;
  try {
    CargarTextosFormulario(this);
    setWindowIcon(QIcon(objApi().Icono()));
    if (Rejilla() != nullptr) {
      ServiciosHost::Nuevo().CargarAnchos(Rejilla(), ClaveAnchos(), m_ficha.nombre);
    }
    if (!Cargar()) {
      return;
    }
    ServiciosHost::Nuevo().establecercontrolcambioformulario(Controles());
    m_errorCarga = false;
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    // The unload of a form whose load failed does not release the lock that the load took.
    std::optional<automation::Error> ignored;
    Intentar(ignored, [this] { LiberarRegistro(); });
    InformarErrorCarga(error);
  }
}

void FormularioMantenimiento::InformarErrorCarga(const automation::Error& error) {
  MensajeError(m_ficha.cadenaError, error);
}

void FormularioMantenimiento::BloquearRegistro() {
  const ServiciosHost services = ServiciosHost::Nuevo();
  if (services.BloqueoRegistro(m_ficha.nombre, m_ficha.clave, objApi().IDSeleccionado(), m_bloqueado)) {
    services.BloquearControles(BotonAceptar());
  }
}

void FormularioMantenimiento::LiberarRegistro() {
  if (!m_bloqueado) {
    return;
  }
  m_bloqueado = false;
  ServiciosHost::Nuevo().DesbloqueoRegistro(m_ficha.nombre, m_ficha.clave, objApi().IDSeleccionado());
}

void FormularioMantenimiento::Form_QueryUnload(bool& cancel, UnloadMode mode) {
  if (mode == FormCode || m_errorCarga) {
    return;
  }
  if (!ServiciosHost::Nuevo().controlcambioformulario(Controles())) {
    return;
  }
  switch (MensajeConAviso(m_ficha.cadenaGuardar, vbYesNoCancel + vbQuestion)) {
    case vbYes:
      // Intended: the form closes even when Accept refuses to write.
      BotonAceptar()->click();
      break;
    case vbCancel:
      cancel = true;
      break;
    default:
      break;
  }
}

// Every step is tried, so that a failing one does not leave the record locked; the first error is told.
void FormularioMantenimiento::Form_Unload() {
  std::optional<automation::Error> error;
  if (!m_devuelto) {
    Intentar(error, [this] {
      if (objApi().Accion() == m_constAccion.Nuevo()) {
        objApi().IDAux(0);
      }
    });
  }
  if (!m_errorCarga) {
    if (Rejilla() != nullptr) {
      Intentar(error, [this] { ServiciosHost::Nuevo().SalvarAnchos(Rejilla(), ClaveAnchos(), m_ficha.nombre); });
    }
    Intentar(error, [this] { LiberarRegistro(); });
  }
  if (error) {
    Plataforma::Current().Beep();
    MensajeError(m_ficha.cadenaError, *error);
  }
}

bool FormularioMantenimiento::EsAlta() const {
  const int action = objApi().Accion();
  return action == m_constAccion.Agregar() || action == m_constAccion.Nuevo();
}

void FormularioMantenimiento::DevolverNuevo(const QVariant& id) {
  objApi().IDAux(id);
  m_devuelto = true;
}

void FormularioMantenimiento::CancelarYCerrar() {
  objApi().IDAux(0);
  Unload();
}

bool FormularioMantenimiento::ConfirmarCampos() {
  BotonAceptar()->setFocus();
  Plataforma::Current().DoEvents();
  return IsLoaded();
}

FocusWatch* FormularioMantenimiento::SeleccionarAlEnfocar(QWidget* textBox) {
  auto* watch = new FocusWatch(textBox);
  On(watch, &FocusWatch::Entered, [textBox] { ServiciosHost::Nuevo().SeleccionarTexto(textBox); });
  return watch;
}

QString FormularioMantenimiento::ClaveAnchos() const {
  return objApi().tituloaplicacion() + u'\\' + objApi().PathNodo();
}

EntradaDesactivada::EntradaDesactivada(QWidget* form) : m_form(form), m_focus(form->focusWidget()) {
  form->setEnabled(false);
}

EntradaDesactivada::~EntradaDesactivada() {
  if (m_form) {
    m_form->setEnabled(true);
  }
  if (m_focus) {
    m_focus->setFocus();
  }
}
