// The panel over a list: a picture, a line of text, a spinner; or the line that says that nothing was found.
#include "HNManagerPlugin/Classes/ViewManager/HNNoSearchResultViewController.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/views/NibRegistry.h"

namespace {

std::shared_ptr<NSImageView> picture(Nib &nib, const NSString &name, double side) {
    auto view = nib.make<NSImageView>();
    view->setImage(NSBundle::bundleForClass()->imageForResource_ofType(name, "png"));
    view->setFrameSize({side, side});
    return view;
}

std::shared_ptr<NSTextField> line(Nib &nib, const char *identifier) {
    auto field = nib.make<NSTextField>();
    field->setEditable(false);
    field->setBordered(false);
    field->setDrawsBackground(false);
    field->setAlignment(NSTextAlignment::center);
    field->setIdentifier(identifier);
    return field;
}

// In the middle of `root`, `dy` points below it.
void center(const std::shared_ptr<NSView> &view, const std::shared_ptr<NSView> &root, double dy) {
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    root->addSubview(view);
    root->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::centerX, root, NSLayoutAttribute::centerX));
    root->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::centerY, root, NSLayoutAttribute::centerY, dy));
}

void fixSize(const std::shared_ptr<NSView> &view, double width, double height) {
    view->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::width, nullptr, NSLayoutAttribute::notAnAttribute, width));
    view->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::height, nullptr, NSLayoutAttribute::notAnAttribute, height));
}

void build(Nib &nib) {
    const auto owner = nib.owner<HNNoSearchResultViewController>();
    const auto root = nib.make<HNNOSearchView>(NSRect(0, 0, 600, 400));
    root->setIdentifier("NoSearchPanel");
    root->setWantsLayer(true);
    root->layer()->setBackgroundColor(NSColor::whiteColor());

    const auto noData = picture(nib, "icon_nodata", 96);
    noData->setIdentifier("NoDataPicture");
    const auto noSearch = picture(nib, "icon_nosearch", 96);
    noSearch->setIdentifier("NoSearchPicture");
    const auto noSearchText = line(nib, "NoSearchText");
    const auto remind = line(nib, "RemindText");
    const auto spinner = picture(nib, "icon_loading", 32);
    spinner->setIdentifier("Spinner");
    spinner->setWantsLayer(true);
    spinner->setLayer(make<CenterAnchorPointLayer>());

    for (const auto &[view, side] : {std::pair{noData, 96.0}, {noSearch, 96.0}, {spinner, 32.0}}) {
        fixSize(view, side, side);
        center(view, root, -40);
    }
    for (const auto &text : {noSearchText, remind}) {
        fixSize(text, 520, 44);
        center(text, root, 44);
    }
    nib.setView(root);
    if (!owner)
        return;
    owner->remindString = remind;
    owner->noSearchString = noSearchText;
    owner->animationImageView = spinner;
    const auto hides = [](const std::vector<std::shared_ptr<NSView>> &views) {
        return [views = std::vector<std::weak_ptr<NSView>>(views.begin(), views.end())](const bool &hidden) {
            for (const auto &view : views)
                tell(view, [hidden](NSView &v) { v.setHidden(hidden); });
        };
    };
    owner->hiddenNoDataInfo.observe(hides({noData}));
    owner->hiddenNoSearchFieldInfo.observe(hides({noSearch, noSearchText}));
    owner->hiddenRemindString.observe(hides({remind}));
    owner->midLabelStr.observe([weak = std::weak_ptr(noSearchText)](const NSString &text) {
        tell(weak, [&](NSTextField &field) { field.setStringValue(text); });
    });
}

const NibRegistry::Entry entry("HNNoSearchResultViewController", build);

}  // namespace
