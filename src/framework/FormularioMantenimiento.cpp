#include "framework/FormularioMantenimiento.h"

#include "framework/CargarTextosFormulario.h"
#include "framework/FocusWatch.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"

#include <QAbstractButton>
#include <QIcon>
#include <QTableView>

#include <utility>

FormularioMantenimiento::FormularioMantenimiento(FichaFormulario ficha)
    : Formulario(ficha.nombre), m_ficha(std::move(ficha)) {}

void FormularioMantenimiento::Form_Load() {
  m_bloqueado = false;
  m_devuelto = false;
  m_errorCarga = true;
  try {
    CargarTextosFormulario(this);
    setWindowIcon(QIcon(objApi().Icono()));
    if (!Cargar()) {
      return;
    }
    if (Rejilla() != nullptr) {
      ServiciosHost::Nuevo().CargarAnchos(Rejilla(), ClaveAnchos(), m_ficha.nombre);
    }
    ServiciosHost::Nuevo().establecercontrolcambioformulario(Controles());
    m_errorCarga = false;
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    LiberarRegistro();
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

// The unload of a form whose load failed does not release the lock; a lock that such a load took is released here.
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

void FormularioMantenimiento::Form_Unload() {
  try {
    if (!m_devuelto && objApi().Accion() == m_constAccion.Nuevo()) {
      objApi().IDAux(0);
    }
    if (!m_errorCarga) {
      if (Rejilla() != nullptr) {
        ServiciosHost::Nuevo().SalvarAnchos(Rejilla(), ClaveAnchos(), m_ficha.nombre);
      }
      LiberarRegistro();
    }
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    Plataforma::Current().Beep();
    MensajeError(m_ficha.cadenaError, error);
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

void FormularioMantenimiento::ConfirmarCampos() {
  BotonAceptar()->setFocus();
  Plataforma::Current().DoEvents();
}

void FormularioMantenimiento::SeleccionarAlEnfocar(QWidget* textBox) {
  On(new FocusWatch(textBox), &FocusWatch::Entered, [textBox] { ServiciosHost::Nuevo().SeleccionarTexto(textBox); });
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
