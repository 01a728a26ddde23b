#include "HNManagerPlugin/Classes/SubViews/Notes/ViewModel/HNMNoteViewModel.h"

HN_CLASS_TABLE(HNNoteEntity, SkeletonEntity, )
HN_CLASS_TABLE(HNMNoteViewModel, SkeletonViewModel, )
