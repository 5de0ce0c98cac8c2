// The installed applications by their desktop entries, and the roles that the user's defaults give to some of them.
#pragma once

#include "Platform/Linux/ApplicationCatalogue.h"

#include <memory>

namespace korvane::platform {

struct DesktopEntry;

// Reads the entries at the first question, and again at the first one after something was installed or removed.
class DesktopCatalogue final : public ApplicationCatalogue {
public:
    DesktopCatalogue();
    ~DesktopCatalogue() override;
    DesktopCatalogue(const DesktopCatalogue &) = delete;
    DesktopCatalogue &operator=(const DesktopCatalogue &) = delete;

    std::optional<ApplicationIdentity> match(const WindowOrigin &origin) override;
    unsigned revision() const override;
    // Of several changes in a row only the first is told until somebody asks for an application.
    [[nodiscard]] Subscription observe(std::function<void()> callback) override;

    // The application of a fixed identifier, if one fills that role, or of a desktop entry's id.
    std::optional<ApplicationIdentity> withIdentifier(std::string_view identifier);
    // The application whose desktop entry is that file; symbolic links are followed.
    std::optional<ApplicationIdentity> atPath(std::string_view path);

private:
    struct Index;
    class Monitor;

    Index &index();
    ApplicationIdentity describe(const DesktopEntry &entry);

    std::unique_ptr<Monitor> monitor;
    std::unique_ptr<Index> read;  // null until the first question
    unsigned readAt = 0;          // the change that it knows of
};

}  // namespace korvane::platform
