// Owners for objects from GLib. Include it only in source files, because GLib's names clash with Qt's.
#pragma once

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <memory>

namespace korvane::platform {

struct GlibFree {
    void operator()(gchar *text) const { g_free(text); }
    void operator()(GKeyFile *file) const { g_key_file_unref(file); }
    void operator()(GError *error) const { g_error_free(error); }
    void operator()(GVariant *value) const { g_variant_unref(value); }
};

struct VariantUnref {
    void operator()(GVariant *value) const { g_variant_unref(value); }
};

template <typename T> struct GobjectUnref {
    void operator()(T *object) const { g_object_unref(object); }
};

using GlibText = std::unique_ptr<gchar, GlibFree>;
using Variant = std::unique_ptr<GVariant, VariantUnref>;
using GlibKeyFile = std::unique_ptr<GKeyFile, GlibFree>;
using GlibVariant = std::unique_ptr<GVariant, GlibFree>;
template <typename T> using Gobject = std::unique_ptr<T, GobjectUnref<T>>;

}  // namespace korvane::platform
