#pragma once

#include "banking/BancoBD.h"
#include "banking/SucursalesModel.h"
#include "banking/cSucursal.h"
#include "framework/FormularioMantenimiento.h"

#include <memory>

namespace Ui {
class frmBanco;
}

/// Adds or edits one bank together with its branches. The branches are edited in memory; Accept writes everything in
/// one transaction.
class frmBanco : public FormularioMantenimiento {
  Q_OBJECT

 public:
  frmBanco();
  ~frmBanco() override;

 protected:
  void CrearControles() override;
  bool Cargar() override;
  QAbstractButton* BotonAceptar() const override;
  QTableView* Rejilla() const override;

 private:
  void cmdBanco_Click(int index);
  void AgregarSucursal();
  void ModificarSucursal();
  void EliminarSucursal();
  void Aceptar();
  bool Guardar();
  bool Escribir();

  bool Editar(const std::shared_ptr<cSucursal>& sucursal, quint8 accion);
  void Mostrar(const std::shared_ptr<cSucursal>& sucursal);
  BancoBD::Banco Tecleado() const;
  std::shared_ptr<cSucursal> ExigirSeleccion() const;
  void Seleccionar(int row);
  qint32 SiguienteIdTemporal() const;

  std::unique_ptr<Ui::frmBanco> m_ui;
  ColeccionSucursales m_sucursales;
  SucursalesModel* m_modelo = nullptr;
};
