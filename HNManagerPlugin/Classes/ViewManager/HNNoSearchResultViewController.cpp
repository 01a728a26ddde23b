#include "HNManagerPlugin/Classes/ViewManager/HNNoSearchResultViewController.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(CenterAnchorPointLayer, CALayer, )
HN_CLASS_TABLE(HNNOSearchView, NSView, )
HN_CLASS_TABLE(HNNoSearchResultViewController, NSViewController,
               .key("hiddenNoSearchFieldInfo", &HNNoSearchResultViewController::hiddenNoSearchFieldInfo)
               .key("hiddenNoDataInfo", &HNNoSearchResultViewController::hiddenNoDataInfo)
               .key("hiddenRemindString", &HNNoSearchResultViewController::hiddenRemindString)
               .key("remindString", &HNNoSearchResultViewController::remindString)
               .key("noSearchString", &HNNoSearchResultViewController::noSearchString)
               .key("animationImageView", &HNNoSearchResultViewController::animationImageView)
               .key("midLabelStr", &HNNoSearchResultViewController::midLabelStr))

void HNNoSearchResultViewController::awakeFromNib() {
    NSViewController::awakeFromNib();
    midLabelStr = localized("Manager_No_Search_file");
}

std::shared_ptr<CABasicAnimation> HNNoSearchResultViewController::rotationAnimation() {
    const auto spinner = animationImageView.lock();
    const NSRect frame = spinner ? spinner->frame() : NSRect();
    const NSRect bounds = spinner ? spinner->bounds() : NSRect();
    animationCenterPoint = {frame.origin.x + bounds.size.width * 0.5, frame.origin.y + bounds.size.height * 0.5};
    if (spinner && spinner->layer()) {
        spinner->layer()->setAnchorPoint({0.5, 0.5});
        spinner->layer()->setPosition(animationCenterPoint);
    }
    auto animation = CABasicAnimation::animationWithKeyPath("transform.rotation.z");
    animation->toValue = -6.2831855F;
    animation->duration = 1.0;
    animation->cumulative = true;
    animation->repeatCount = 9.223372e18F;
    animation->removedOnCompletion = false;
    return animation;
}
