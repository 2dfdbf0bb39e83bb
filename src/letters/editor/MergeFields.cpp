#include "letters/editor/MergeFields.h"

#include <array>

namespace letters {

namespace {

using Kind = FieldItem::Kind;

constexpr FieldItem Separator(const char16_t* name, bool inSubmenu = false) {
  return {.kind = Kind::Separator, .name = name, .inSubmenu = inSubmenu};
}

constexpr FieldItem Submenu(const char16_t* name, int caption) {
  return {.kind = Kind::Submenu, .name = name, .caption = caption};
}

constexpr FieldItem Field(const char16_t* name, int caption, int marker, int velumarMarker = 0) {
  return {.kind = Kind::Marker,
          .name = name,
          .caption = caption,
          .marker = marker,
          .velumarMarker = velumarMarker,
          .inSubmenu = true};
}

constexpr std::array items{
    FieldItem{.kind = Kind::Cut, .name = u"mnuEmergenteCortar", .caption = 3023},
    FieldItem{.kind = Kind::Copy, .name = u"mnuEmergenteCopiar", .caption = 3024},
    FieldItem{.kind = Kind::Paste, .name = u"mnuEmergentePegar", .caption = 3025},
    Separator(u"mnuEmergenteSep3"),
    Submenu(u"mnuEmergenteDatosPersonales", 3026),
    Field(u"mnuEmergenteTratamiento", 3059, 3148),
    Field(u"mnuEmergenteNombre", 3027, 3128),
    Field(u"mnuEmergenteApellidos", 3028, 3115),
    Field(u"mnuEmergenteNombreCompleto", 3029, 3129),
    Field(u"mnuEmergenteNombreCompleto2", 3030, 3130),
    Field(u"mnuEmergenteNIF", 3031, 3127),
    Field(u"mnuEmergenteNumReferencia", 3058, 3147),
    Separator(u"mnuEmergenteSep1", true),
    Field(u"mnuEmergenteDireccion", 3032, 3118),
    Field(u"mnuEmergentePoblacion", 3033, 3132),
    Field(u"mnuEmergenteProvincia", 3034, 3133),
    Field(u"mnuEmergenteCP", 3035, 3117),
    Field(u"mnuEmergentePais", 3036, 3131),
    Separator(u"mnuEmergenteSep2"),
    Submenu(u"mnuEmergenteFechas", 3037),
    Field(u"mnuEmergenteFechaCorta", 3038, 3120),
    Field(u"mnuEmergenteFechaLarga", 3039, 3122),
    Field(u"mnuEmergenteFechaHoraCorta", 3040, 3121),
    Separator(u"mnuEmergenteSep4"),
    Submenu(u"mnuEmergenteDatosDonativo", 3041),
    Field(u"mnuEmergenteFinalidadDonativo", 3042, 3124, 3123),
    Field(u"mnuEmergenteImporteDonativo", 3043, 3126, 3125),
    Field(u"mnEmergentePeriodicidadDonativo", 3044, 3105, 3104),
    Field(u"mnEmergenteTextoRecibo", 3045, 3107),
    Field(u"mnEmergenteFechaDonativo", 3046, 3103, 3102),
    Separator(u"mnuEmergenteSep5"),
    Submenu(u"mnuEmergenteDatosSuscripcion", 3047),
    Field(u"mnuEmergentePublicacionSuscripcion", 3048, 3134),
    Field(u"mnuEmergenteImporteSuscripcion", 3049, 3125),
    Field(u"mnEmergentePeriodicidadSuscripcion", 3050, 3106),
    Field(u"mnuEmergenteColaboradorReceptor", 3051, 3116),
    Separator(u"mnuEmergenteSep6"),
    FieldItem{.kind = Kind::Marker, .name = u"mnuEmergenteEncabezado", .caption = 3052, .marker = 3119},
    Separator(u"mnuEmergenteSep7"),
    Submenu(u"mnuModelo182", 3053),
    Field(u"mnuModelo182Finalidad", 3054, 3137),
    Field(u"mnuModelo182ImporteTotal", 3055, 3138),
    Field(u"mnuModelo182DeduccionFisica", 3056, 3135),
    Field(u"mnuModelo182Deduccionjuridica", 3057, 3136),
};

}  // namespace

std::span<const FieldItem> FieldItems() {
  return items;
}

}  // namespace letters
