#include "Platform/Wayfire/TileLayout.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace platform::wayfire {

namespace {

using compositor::member;

Json placeOf(const ViewFacts& view) {
    return {{"wset-index", view.workspaceSet},
            {"workspace",
             {{"x", static_cast<std::int64_t>(view.workspace.x)}, {"y", static_cast<std::int64_t>(view.workspace.y)}}}};
}

} // namespace

Request layoutRequest(const ViewFacts& view) {
    return {.method = "simple-tile/get-layout", .data = placeOf(view)};
}

std::optional<Request> removingRequest(const ViewFacts& view, const compositor::WindowIdentifier& identifier,
                                       const Json& answer) {
    const Json* present = member(answer, "layout");
    if (present == nullptr || !present->is_object()) {
        return std::nullopt;
    }
    Json layout = *present;
    const auto isRemoved = [number = numberOf(identifier)](const Json& node) {
        return compositor::numberOf(node, "view-id") == number;
    };
    bool isThere = false;
    std::vector<Json*> waiting{&layout};
    while (!waiting.empty()) {
        Json& node = *waiting.back();
        waiting.pop_back();
        if (const Json* share = member(node, "percent"); share != nullptr && share->is_number()) {
            node["weight"] = *share;
        }
        for (const char* split : {"vertical-split", "horizontal-split"}) {
            if (compositor::listIn(node, split) == nullptr) {
                continue;
            }
            auto& children = node[split].get_ref<Json::array_t&>();
            isThere = std::erase_if(children, isRemoved) > 0 || isThere;
            for (Json& child : children) {
                waiting.push_back(&child);
            }
        }
    }
    if (!isThere) {
        return std::nullopt;
    }
    Request request{.method = "simple-tile/set-layout", .data = placeOf(view)};
    request.data["layout"] = std::move(layout);
    return request;
}

} // namespace platform::wayfire
