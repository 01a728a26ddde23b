#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DupContactGroupModel.h"

HN_CLASS_TABLE(DupContactGroupModel, NSObjectTable,
               .key("dupContactGroupArray", [](NSObject &o) {
                   const auto &contacts = static_cast<DupContactGroupModel &>(o).dupContactGroupArray;
                   return Value(Value::List(contacts.begin(), contacts.end()));
               }))
