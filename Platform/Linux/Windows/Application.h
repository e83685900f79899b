#pragma once

#include "Platform/Seam/Desktop/RunningApplications.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform::linux {

/// One process that owns windows, or did. `RunningApplications` makes it; a reference to it may outlive that.
class Application final : public platform::RunningApplication {
public:
    /// The sources from which a running application's properties are read.
    class Directory {
    public:
        Directory() = default;
        Directory(const Directory&) = delete;
        Directory& operator=(const Directory&) = delete;
        virtual ~Directory() = default;

        /// Reads the properties of the application's windows that identify it.
        [[nodiscard]] virtual std::optional<std::string> identify(ProcessIdentifier process) = 0;
        [[nodiscard]] virtual std::optional<std::string> displayName(const std::string& bundleIdentifier) = 0;
        [[nodiscard]] virtual ActivationPolicy activationPolicy(ProcessIdentifier process) = 0;
    };

    /// After the directory's owner has reset it, there is no source any more.
    Application(std::weak_ptr<Directory*> directory, ProcessIdentifier process)
        : directory(std::move(directory))
        , process(process) {}

    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return process; }
    /// Found once, it stays the same. Until then every call reads the windows again.
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override;
    [[nodiscard]] std::optional<std::string> localizedName() const override;
    [[nodiscard]] ActivationPolicy activationPolicy() const override;
    [[nodiscard]] bool isTerminated() const override { return terminated; }

    [[nodiscard]] bool isIdentified() const { return identifier.has_value(); }

    void setBundleIdentifier(std::string found) { identifier = std::move(found); }

    /// Whether its launch was posted and is still to be delivered.
    [[nodiscard]] bool isBeingLaunched() const { return beingLaunched; }

    void setBeingLaunched(bool isBeing) { beingLaunched = isBeing; }

    void terminate() { terminated = true; }

private:
    std::weak_ptr<Directory*> directory;
    ProcessIdentifier process;
    std::optional<std::string> identifier;
    bool beingLaunched = false;
    bool terminated = false;
};

} // namespace platform::linux
