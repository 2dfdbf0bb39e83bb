#pragma once

#include "banking/BancoBD.h"
#include "banking/cSucursal.h"
#include "framework/FormularioMantenimiento.h"

#include <memory>
#include <optional>

class QComboBox;

namespace Ui {
class frmSucursal;
}

/// Edits one bank branch: for the bank dialog a branch held in memory, written by nobody here; for the host a new
/// branch of the bank `IDAux`, written at once.
class frmSucursal : public FormularioMantenimiento {
  Q_OBJECT

 public:
  /// What the bank dialog hands over before it shows this one. The collection and the branch are the caller's.
  struct Encargo {
    std::shared_ptr<cSucursal> sucursal;              ///< the branch to fill in or to edit
    const ColeccionSucursales* sucursales = nullptr;  ///< where its code must be unique
    quint8 accion = 0;                                ///< `Agregar` or `Modificar`
    std::optional<BancoBD::Banco> banco;              ///< the bank as the caller shows it
  };

  frmSucursal();
  ~frmSucursal() override;

  /// The branch is then edited for the bank dialog; nothing is written to the database.
  void Abrir(Encargo encargo) { m_encargo = std::move(encargo); }
  /// True when the user accepted; the branch then holds what was typed.
  bool Aceptado() const { return m_aceptado; }

 protected:
  void CrearControles() override;
  bool Cargar() override;
  QAbstractButton* BotonAceptar() const override;

 private:
  bool CargarParaBanco();
  bool CargarParaHost();
  void MostrarBanco(const BancoBD::Banco& banco, int cadenaTitulo);
  void MostrarSucursal(const cSucursal& sucursal);
  qint32 IDPaisEspana() const;
  qint32 IDProvinciaMadrid(qint32 pais) const;
  void PreseleccionarPaisYProvincia();
  void RellenarPaises(qint32 pais);
  void RellenarProvincias(qint32 provincia);
  void Rellenar(QComboBox* combo, const QString& statement, const QString& clave, qint32 id);

  void cboPaises_Click();
  void cmdNPais_Click();
  void cmdNProvincia_Click();
  void cmdSucursales_Click(int index);
  bool CodigoEnUso(const QString& codigo) const;
  cSucursal& Recoger(cSucursal& sucursal) const;
  void AceptarParaBanco();
  void AceptarParaHost(const cSucursal& datos);

  std::unique_ptr<Ui::frmSucursal> m_ui;
  std::optional<Encargo> m_encargo;
  qint32 m_idBanco = 0;
  bool m_aceptado = false;
};
