#include "HNManagerPlugin/contracts/RVViewTemplate/RVOutlineBaseNode.h"

HN_CLASS_TABLE(RVOutlineBaseNode, NSObjectTable,
    .key("children", [](NSObject &o) { return Value(static_cast<RVOutlineBaseNode &>(o).children()); },
         [](NSObject &o, const Value &v) { static_cast<RVOutlineBaseNode &>(o).setChildren(fromValue<std::shared_ptr<NSMutableArray>>(v)); })
    .key("isLeaf", [](NSObject &o) { return Value(static_cast<RVOutlineBaseNode &>(o).isLeaf()); },
         [](NSObject &o, const Value &v) { static_cast<RVOutlineBaseNode &>(o).setIsLeaf(v.boolValue()); }))

RVOutlineBaseNode::RVOutlineBaseNode() : children_(make<NSMutableArray>()) {}

void RVOutlineBaseNode::setChildren(std::shared_ptr<NSMutableArray> children) {
    children_ = children ? std::move(children) : make<NSMutableArray>();
}
