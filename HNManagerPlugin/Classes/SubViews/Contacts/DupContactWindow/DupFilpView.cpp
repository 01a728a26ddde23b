#include "HNManagerPlugin/Classes/SubViews/Contacts/DupContactWindow/DupFilpView.h"

HN_CLASS_TABLE(DupFilpView, NSView)
