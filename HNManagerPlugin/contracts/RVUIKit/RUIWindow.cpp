#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"

HN_CLASS_TABLE(RUIWindow, NSWindow)
