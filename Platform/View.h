#pragma once

namespace platform {

/// What is to be shown in a window or drawn into a picture, described without any toolkit: a value that names the
/// objects it shows. The toolkit that shows it knows the kinds of views there are, and makes them when they are needed.
class View {
public:
    View() = default;
    View(const View&) = default;
    View& operator=(const View&) = default;
    virtual ~View() = default;
};

} // namespace platform
