#pragma once

namespace platform {

/// The content of a window or a picture, described without any toolkit: a value that names its objects. The toolkit
/// knows the kinds of views, and creates them when they are needed.
class View {
public:
    View() = default;
    View(const View&) = default;
    View& operator=(const View&) = default;
    virtual ~View() = default;
};

} // namespace platform
