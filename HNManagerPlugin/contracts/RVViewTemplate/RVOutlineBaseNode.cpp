#include "HNManagerPlugin/contracts/RVViewTemplate/RVOutlineBaseNode.h"

HN_CLASS_TABLE(RVOutlineBaseNode, NSObjectTable,
    .key("children", [](NSObject &o) { return Value(static_cast<RVOutlineBaseNode &>(o).children()); },
         [](NSObject &o, const Value &v) { static_cast<RVOutlineBaseNode &>(o).setChildren(fromValue<std::shared_ptr<NSMutableArray>>(v)); })
    .key("isLeaf", [](NSObject &o) { return Value(static_cast<RVOutlineBaseNode &>(o).isLeaf()); },
         [](NSObject &o, const Value &v) { static_cast<RVOutlineBaseNode &>(o).setIsLeaf(v.boolValue()); }))

const std::shared_ptr<NSMutableArray> &RVOutlineBaseNode::children() const {
    if (!hasList_)
        std::call_once(made_, [this] {
            children_ = make<NSMutableArray>();
            hasList_ = true;
        });
    return children_;
}

void RVOutlineBaseNode::setChildren(std::shared_ptr<NSMutableArray> list) {
    (void)children();
    children_ = list ? std::move(list) : make<NSMutableArray>();
}
