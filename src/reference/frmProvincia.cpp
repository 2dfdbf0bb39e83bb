#include "reference/frmProvincia.h"

#include "framework/Controles.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"
#include "framework/SolicitudAnidada.h"
#include "framework/Sql.h"
#include "platform/automation/Conversion.h"
#include "reference/frmPais.h"
#include "resources/Cadenas.h"
#include "ui_frmProvincia.h"

using automation::Text;
using resources::LoadResString;

namespace {

constexpr qsizetype longestName = 50;

}  // namespace

frmProvincia::frmProvincia()
    : FormularioMantenimiento({.nombre = QStringLiteral("frmProvincia"),
                               .clave = QStringLiteral("IDProvincia"),
                               .cadenaGuardar = 14104,
                               .cadenaError = 14103}) {}

frmProvincia::~frmProvincia() = default;

void frmProvincia::CrearControles() {
  m_ui = std::make_unique<Ui::frmProvincia>();
  m_ui->setupUi(this);
  m_ui->lblPaisFijo->hide();
  SeleccionarAlEnfocar(m_ui->txtProvincia);
  On(m_ui->txtProvincia, &QLineEdit::textChanged, [this] { txtProvincia_Change(); });
  On(m_ui->cmdNuevoPais, &QToolButton::clicked, [this] { cmdNuevoPais_Click(); });
  OnClick(std::array{m_ui->cmdProvincia_0, m_ui->cmdProvincia_1}, [this](int index) { cmdProvincia_Click(index); });
}

QAbstractButton* frmProvincia::BotonAceptar() const {
  return m_ui->cmdProvincia_0;
}

bool frmProvincia::Cargar() {
  m_listas = std::make_unique<Listas>();
  SetCaption(LoadResString(14101));
  const int action = objApi().Accion();
  if (action == ConstAccion().Modificar()) {
    CargarProvincia();
  } else if (action == ConstAccion().Nuevo() && objApi().IDAuxNumero() != 0) {
    FijarPais(objApi().IDAuxNumero());
  } else if (EsAlta()) {
    m_listas->RellenarComboPais(m_ui->cboPais);
  }
  return true;
}

void frmProvincia::CargarProvincia() {
  const auto rs =
      objApi().congestion().Execute(QStringLiteral("SELECT Provincias.Nombre AS Provincia,Provincias.Codpais,"
                                                   "Paises.Nombre AS Pais FROM Provincias LEFT JOIN Paises ON "
                                                   "Provincias.CodPais=Paises.IDPais "
                                                   "WHERE IDProvincia=") +
                                    QString::number(objApi().IDSeleccionado()));
  m_listas->RellenarComboPais(m_ui->cboPais, rs->Field(u"CodPais"));
  BloquearRegistro();
  m_ui->txtProvincia->setText(Text(rs->Field(u"Provincia")));
  SetCaption(LoadResString(14102) + Text(rs->Field(u"Provincia")));
}

void frmProvincia::FijarPais(qint32 pais) {
  m_ui->cboPais->hide();
  m_ui->cmdNuevoPais->hide();
  m_ui->lblPaisFijo->show();
  const auto rs = objApi().congestion().Execute(QStringLiteral("SELECT Nombre FROM Paises WHERE IDPais=") +
                                                QString::number(pais) + QStringLiteral(" AND Eliminado=0"));
  m_ui->lblPaisFijo->setText(Text(rs->Field(u"Nombre")).trimmed());
}

void frmProvincia::Form_Activate() {
  if (m_ui->cboPais->isVisible()) {
    m_ui->cboPais->setFocus();
  }
}

void frmProvincia::txtProvincia_Change() {
  const QString text = m_ui->txtProvincia->text();
  if (text.size() > longestName) {
    const int caret = m_ui->txtProvincia->cursorPosition();
    // A character outside the basic plane takes two units and is not cut in half.
    const bool half = text[longestName - 1].isHighSurrogate();
    m_ui->txtProvincia->setText(text.left(half ? longestName - 1 : longestName));
    m_ui->txtProvincia->setCursorPosition(caret);
  }
}

void frmProvincia::cmdNuevoPais_Click() {
  const SolicitudAnidada request;
  frmPais().ShowModal();
  if (request.Creado() > 0) {
    m_listas->RellenarComboPais(m_ui->cboPais, request.Creado());
  }
}

void frmProvincia::cmdProvincia_Click(int index) {
  if (index != 0) {
    CancelarYCerrar();
    return;
  }
  const bool countryMissing = m_ui->lblPaisFijo->isHidden() && m_ui->cboPais->currentIndex() < 0;
  if (m_ui->txtProvincia->text().trimmed().isEmpty() || countryMissing) {
    MensajeConAviso(14100, vbInformation);
    m_ui->txtProvincia->setFocus();
    return;
  }
  Guardar(TextoSql(m_ui->txtProvincia->text()));
  Unload();
}

void frmProvincia::Guardar(const QString& nombre) {
  adodb::Connection& connection = objApi().congestion();
  const int action = objApi().Accion();
  if (action == ConstAccion().Modificar()) {
    connection.Execute(QStringLiteral("UPDATE Provincias SET Nombre='") + nombre + QStringLiteral("', CodPais=") +
                       QString::number(ItemData(m_ui->cboPais)) + QStringLiteral(" WHERE IDProvincia=") +
                       QString::number(objApi().IDSeleccionado()));
    return;
  }
  if (!EsAlta()) {
    return;
  }
  const bool onBehalf = action == ConstAccion().Nuevo();
  const qint32 fixedCountry = onBehalf ? objApi().IDAuxNumero() : 0;
  connection.Execute(QStringLiteral("INSERT INTO Provincias(CodPais,Nombre,eliminado) VALUES(") +
                     QString::number(fixedCountry != 0 ? fixedCountry : ItemData(m_ui->cboPais)) +
                     QStringLiteral(",'") + nombre + QStringLiteral("',0)"));
  if (onBehalf) {
    Plataforma::Current().DoEvents();
    const auto rs = connection.Execute(QStringLiteral("SELECT MAX(IDProvincia) AS maxid FROM Provincias"));
    DevolverNuevo(rs->Field(u"maxid"));
    rs->Close();
  }
}
