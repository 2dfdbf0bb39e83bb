#include "reference/frmPais.h"

#include "framework/Mensajes.h"
#include "framework/Plataforma.h"
#include "framework/Sql.h"
#include "platform/automation/Conversion.h"
#include "resources/Cadenas.h"
#include "ui_frmPais.h"

using automation::Text;
using resources::LoadResString;

frmPais::frmPais()
    : FormularioMantenimiento({.nombre = QStringLiteral("frmPais"),
                               .clave = QStringLiteral("IDPais"),
                               .cadenaGuardar = 12104,
                               .cadenaError = 12103}) {}

frmPais::~frmPais() = default;

void frmPais::CrearControles() {
  m_ui = std::make_unique<Ui::frmPais>();
  m_ui->setupUi(this);
  SeleccionarAlEnfocar(m_ui->txtPais);
  OnClick(std::array{m_ui->cmdPais_0, m_ui->cmdPais_1}, [this](int index) { cmdPais_Click(index); });
}

QAbstractButton* frmPais::BotonAceptar() const {
  return m_ui->cmdPais_0;
}

bool frmPais::Cargar() {
  SetCaption(LoadResString(12101));
  if (objApi().Accion() == ConstAccion().Modificar()) {
    const auto rs = objApi().congestion().Execute(QStringLiteral("SELECT * FROM Paises WHERE IDPais=") +
                                                  QString::number(objApi().IDSeleccionado()));
    m_ui->txtPais->setText(Text(rs->Field(u"nombre")));
    SetCaption(LoadResString(12102) + Text(rs->Field(u"Nombre")));
    BloquearRegistro();
    rs->Close();
  }
  return true;
}

void frmPais::cmdPais_Click(int index) {
  if (index != 0) {
    CancelarYCerrar();
    return;
  }
  if (m_ui->txtPais->text().trimmed().isEmpty()) {
    MensajeConAviso(12100, vbInformation);
    m_ui->txtPais->setFocus();
    return;
  }
  Guardar(TextoSql(m_ui->txtPais->text()));
  Unload();
}

void frmPais::Guardar(const QString& nombre) {
  adodb::Connection& connection = objApi().congestion();
  if (EsAlta()) {
    connection.Execute(QStringLiteral("INSERT INTO Paises(nombre,eliminado) VALUES('") + nombre +
                       QStringLiteral("',0)"));
    if (objApi().Accion() == ConstAccion().Nuevo()) {
      const auto rs = connection.Execute(QStringLiteral("SELECT MAX(IDPais) AS numero FROM Paises"));
      DevolverNuevo(rs->Field(u"numero"));
    }
  } else if (objApi().Accion() == ConstAccion().Modificar()) {
    connection.Execute(QStringLiteral("UPDATE Paises SET Nombre='") + nombre + QStringLiteral("' WHERE idpais=") +
                       QString::number(objApi().IDSeleccionado()));
  }
}
