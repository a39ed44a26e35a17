// The operator's telephone. Every thread has a form of its own; what Python sees is one object that
// stands for the form of whichever thread asks.
#include <pybind11/pybind11.h>

#include <string>

#include "bindings.hpp"
#include "ravelinox/telephone.hpp"
#include "values.hpp"

namespace ravelinox::python {

namespace {

using Text = Passed<std::string>;

struct FormOfThisThread {};

template <MovementList TelephoneForm::*List>
void add_list(py::class_<FormOfThisThread>& shown, const char* name) {
  shown.def_property(
      name, [](FormOfThisThread&) { return Text{(frmTelefonoINdll().*List).text()}; },
      [](FormOfThisThread&, Text text) { frmTelefonoINdll().*List = std::move(text.value); });
}

}  // namespace

void bind_telephone(py::module_& module) {
  py::class_<TelephoneView>(module, "TelephoneView", "What the telephone's window shows, whole.")
      .def_property_readonly("caller", [](const TelephoneView& it) { return Text{it.caller}; })
      .def_property_readonly("messages", [](const TelephoneView& it) { return Text{it.messages}; })
      .def_readonly("reply_enabled", &TelephoneView::reply_enabled)
      .def_readonly("send_enabled", &TelephoneView::send_enabled);

  py::class_<FormOfThisThread> shown(module, "TelephoneForm",
                                     "The telephone of the thread that asks.");
  add_list<&TelephoneForm::TreniArrivati>(shown, "TreniArrivati");
  add_list<&TelephoneForm::TreniPartiti>(shown, "TreniPartiti");
  shown
      .def(
          "RiceviComunicazione",
          [](FormOfThisThread&, const Passed<Variant>& caller, const Passed<Variant>& text) {
            frmTelefonoINdll().RiceviComunicazione(caller.value, text.value);
          },
          py::arg("Chiamante"), py::arg("Testo"))
      .def("send", [](FormOfThisThread&) { frmTelefonoINdll().send(); })
      .def("close", [](FormOfThisThread&) { frmTelefonoINdll().close(); })
      .def_property_readonly("is_open",
                             [](FormOfThisThread&) { return frmTelefonoINdll().is_open(); })
      .def_property_readonly(
          "view", [](FormOfThisThread&) -> TelephoneView { return frmTelefonoINdll().view(); });
  module.attr("frmTelefonoINdll") = FormOfThisThread();
}

}  // namespace ravelinox::python
