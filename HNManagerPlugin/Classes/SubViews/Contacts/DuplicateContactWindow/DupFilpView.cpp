#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupFilpView.h"

HN_CLASS_TABLE(DupFilpView, NSView)
