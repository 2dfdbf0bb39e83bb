#pragma once

#include "framework/Formulario.h"
#include "framework/ServiciosHost.h"
#include "platform/contract/cConstAccion.h"

#include "platform/automation/Error.h"

class FocusWatch;
class QAbstractButton;
class QTableView;

/// What distinguishes one maintenance dialog from another in their common life.
struct FichaFormulario {
  QString nombre;     ///< class name, also the name under which the dialog locks and reports
  QString clave;      ///< key column of the record lock; empty for a dialog that takes none
  int cadenaGuardar;  ///< string number of the close prompt
  int cadenaError;    ///< string number of the dialog's "Error "
};

/// The common life of the dialogs that edit one record: captions, icon, the dialog's own load, record lock, change
/// tracking, the prompt on closing, the release of the lock and the grid's column widths.
class FormularioMantenimiento : public Formulario {
  Q_OBJECT

 public:
  explicit FormularioMantenimiento(FichaFormulario ficha);

  /// True from the first act of the load until it has completed.
  bool ErrorCarga() const { return m_errorCarga; }

 protected:
  /// The dialog's own part of the load: its caption and its record by `objApi().Accion()`. False when it refused and
  /// has told the user why. Errors go to InformarErrorCarga.
  virtual bool Cargar() = 0;
  virtual QAbstractButton* BotonAceptar() const = 0;
  /// The grid whose column widths are kept, if any.
  virtual QTableView* Rejilla() const { return nullptr; }
  /// Tells the user of an error of the load: the dialog's "Error ", number and description.
  virtual void InformarErrorCarga(const automation::Error& error);

  /// For a dialog that modifies: asks the host for the record's lock and disables Accept when another user holds it.
  void BloquearRegistro();
  /// True for the actions that add a record.
  bool EsAlta() const;
  /// Hands the identifier of the record that was created back to the caller, in `IDAux`. A dialog opened under the
  /// action `Nuevo` that never did hands back 0, however it was closed.
  void DevolverNuevo(const QVariant& id);
  /// Cancel: hands back that nothing was created, and closes.
  void CancelarYCerrar();
  /// Moves the focus to Accept and lets what depends on leaving a field run. False when the form was closed meanwhile.
  [[nodiscard]] bool ConfirmarCampos();
  /// Selects a text box's whole text through the host whenever it receives the focus.
  /// The watch is returned for those who also want to hear of leaving: a control takes one watch only.
  FocusWatch* SeleccionarAlEnfocar(QWidget* textBox);
  const cConstAccion& ConstAccion() const { return m_constAccion; }
  const FichaFormulario& Ficha() const { return m_ficha; }

  void Form_Load() final;
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
  void Form_Unload() override;
  bool CargaFallida() const override { return m_errorCarga; }

 private:
  void LiberarRegistro();
  QString ClaveAnchos() const;

  const FichaFormulario m_ficha;
  const cConstAccion m_constAccion{};
  bool m_errorCarga = false;
  bool m_bloqueado = false;
  bool m_devuelto = false;
};

/// The form takes no input while the object lives; the focus goes back to where it was.
class EntradaDesactivada {
 public:
  explicit EntradaDesactivada(QWidget* form);
  EntradaDesactivada(const EntradaDesactivada&) = delete;
  EntradaDesactivada& operator=(const EntradaDesactivada&) = delete;
  ~EntradaDesactivada();

 private:
  QPointer<QWidget> m_form;
  QPointer<QWidget> m_focus;
};
