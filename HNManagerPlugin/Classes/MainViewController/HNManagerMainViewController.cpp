#include "HNManagerPlugin/Classes/MainViewController/HNManagerMainViewController.h"

HN_CLASS_TABLE(HNManagerMainViewController, HNMbaseViewController, )
