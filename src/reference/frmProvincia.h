#pragma once

#include "framework/FormularioMantenimiento.h"

#include <memory>

namespace Ui {
class frmProvincia;
}

/// Adds or edits one province. Under the action `Nuevo` the caller may fix its country in `IDAux`.
class frmProvincia : public FormularioMantenimiento {
  Q_OBJECT

 public:
  frmProvincia();
  ~frmProvincia() override;

 protected:
  void CrearControles() override;
  bool Cargar() override;
  void Form_Activate() override;
  QAbstractButton* BotonAceptar() const override;

 private:
  void CargarProvincia();
  void FijarPais(qint32 pais);
  void cmdProvincia_Click(int index);
  void cmdNuevoPais_Click();
  void txtProvincia_Change();
  void Guardar(const QString& nombre);

  std::unique_ptr<Ui::frmProvincia> m_ui;
  std::unique_ptr<Listas> m_listas;
};
