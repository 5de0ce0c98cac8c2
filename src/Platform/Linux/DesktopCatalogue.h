// The installed applications, read from their desktop entries, and the roles that some of them have by the user's
// defaults.
#pragma once

#include "Platform/Linux/ApplicationCatalogue.h"

#include <memory>

namespace korvane::platform {

struct DesktopEntry;

// Reads the entries at the first request, and again at the first request after something was installed or removed.
class DesktopCatalogue final : public ApplicationCatalogue {
public:
    DesktopCatalogue();
    ~DesktopCatalogue() override;
    DesktopCatalogue(const DesktopCatalogue &) = delete;
    DesktopCatalogue &operator=(const DesktopCatalogue &) = delete;

    std::optional<ApplicationIdentity> match(const WindowOrigin &origin) override;
    unsigned revision() const override;
    // If there are several changes in a row, only the first is reported, until somebody asks for an application.
    [[nodiscard]] Subscription observe(std::function<void()> callback) override;

    // The application that fills the role with that identifier, or the one whose desktop entry has that id.
    std::optional<ApplicationIdentity> withIdentifier(std::string_view identifier);
    // The application of that desktop entry file. Symbolic links are followed.
    std::optional<ApplicationIdentity> atPath(std::string_view path);

private:
    struct Index;
    class Monitor;

    Index &index();
    ApplicationIdentity describe(const DesktopEntry &entry);

    std::unique_ptr<Monitor> monitor;
    std::unique_ptr<Index> read;  // null until the first request
    unsigned readAt = 0;          // the number of changes when it was read
};

}  // namespace korvane::platform
