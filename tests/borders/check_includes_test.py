"""Plants includes in a small tree and looks at what check_includes.py says about them."""

import contextlib
import io
import os
import tempfile
import unittest

import check_includes

# A header in every room, so that an include of it exists.
HEADERS = [
    "src/App/Startup.h",
    "src/Controllers/TaskbarPanel.h",
    "src/Models/Tasks/TaskOrder.h",
    "src/Platform/Icu/IcuText.h",
    "src/Platform/Linux/ApplicationCatalogue.h",
    "src/Platform/Linux/IconTheme.h",
    "src/Platform/Qt/QtDialogs.h",
    "src/Platform/Simulated/VirtualLoop.h",
    "src/Platform/X11/Atoms.h",
    "src/Ports/MainLoop.h",
    "src/Toolkit/Symbols.h",
    "src/Views/Kit/Painting.h",
    "tests/support/Process.h",
]


class CheckIncludes(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = directory.name
        for header in HEADERS:
            self.write(header, "#pragma once\n")

    def write(self, path, text):
        file = os.path.join(self.root, path)
        os.makedirs(os.path.dirname(file), exist_ok=True)
        with open(file, "w", encoding="utf-8") as stream:
            stream.write(text)

    def check(self):
        """Returns the exit status and what was printed."""
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            status = check_includes.main([self.root])
        return status, printed.getvalue()

    def expect_allowed(self, folder, *includes):
        for include in includes:
            with self.subTest(folder=folder, include=include):
                self.write(f"{folder}/Planted.cpp", f"#include {include}\n")
                self.assertEqual(self.check()[0], 0, self.check()[1])
        os.remove(os.path.join(self.root, folder, "Planted.cpp"))

    def expect_refused(self, folder, *includes):
        for include in includes:
            with self.subTest(folder=folder, include=include):
                self.write(f"{folder}/Planted.cpp", f"// Planted.\n\n#include {include}\n")
                status, text = self.check()
                self.assertEqual(status, 1)
                self.assertRegex(text, rf"\A{folder}/Planted\.cpp:3: .*\n\Z")
        os.remove(os.path.join(self.root, folder, "Planted.cpp"))

    def test_a_tree_without_crossings_passes(self):
        status, text = self.check()
        self.assertEqual(status, 0)
        self.assertIn(f"{len(HEADERS)} files", text)

    def test_an_empty_tree_does_not_pass(self):
        for header in HEADERS:
            os.remove(os.path.join(self.root, header))
        self.assertEqual(self.check()[0], 1)

    def test_models_know_ports_and_no_toolkit(self):
        self.expect_allowed("src/Models/Tasks", '"Models/Tasks/TaskOrder.h"', '"Ports/MainLoop.h"', "<vector>",
                            "<nlohmann/json.hpp>")
        self.expect_refused("src/Models/Tasks", '"Views/Kit/Painting.h"', '"Toolkit/Symbols.h"',
                            '"Controllers/TaskbarPanel.h"', '"Platform/Icu/IcuText.h"', '"App/Startup.h"', "<QString>",
                            "<QtCore/QString>", "<xcb/xcb.h>", "<gio/gio.h>", "<unistd.h>", "<unicode/coll.h>")

    def test_ports_know_nothing(self):
        self.expect_allowed("src/Ports", '"Ports/MainLoop.h"', "<functional>")
        self.expect_refused("src/Ports", '"Models/Tasks/TaskOrder.h"', '"Platform/X11/Atoms.h"', "<QString>",
                            "<nlohmann/json.hpp>", "<unistd.h>")

    def test_the_toolkit_knows_ports_and_qt(self):
        self.expect_allowed("src/Toolkit", '"Toolkit/Symbols.h"', '"Ports/MainLoop.h"', "<QImage>", "<cmath>")
        self.expect_refused("src/Toolkit", '"Models/Tasks/TaskOrder.h"', '"Views/Kit/Painting.h"',
                            '"Platform/Qt/QtDialogs.h"', "<xcb/xcb.h>")

    def test_views_know_no_backend_and_no_controller(self):
        self.expect_allowed("src/Views/Bar", '"Views/Kit/Painting.h"', '"Models/Tasks/TaskOrder.h"', "<QWidget>",
                            '"Ports/MainLoop.h"', '"Toolkit/Symbols.h"')
        self.expect_refused("src/Views/Bar", '"Controllers/TaskbarPanel.h"', '"Platform/Qt/QtDialogs.h"',
                            '"Platform/X11/Atoms.h"', '"App/Startup.h"', "<xcb/xcb.h>", "<glib.h>",
                            "<nlohmann/json.hpp>")

    def test_controllers_know_no_backend(self):
        self.expect_allowed("src/Controllers", '"Views/Kit/Painting.h"', '"Models/Tasks/TaskOrder.h"', "<QWidget>",
                            '"Ports/MainLoop.h"', '"Toolkit/Symbols.h"', '"Controllers/TaskbarPanel.h"')
        self.expect_refused("src/Controllers", '"Platform/Qt/QtDialogs.h"', '"Platform/Linux/IconTheme.h"',
                            '"App/Startup.h"', "<X11/Xlib.h>")

    def test_the_program_knows_everything(self):
        self.expect_allowed("src/App", '"Platform/X11/Atoms.h"', '"Models/Tasks/TaskOrder.h"', "<QApplication>",
                            "<xcb/xcb.h>", '"Controllers/TaskbarPanel.h"')

    def test_not_even_the_program_knows_the_tests(self):
        self.expect_refused("src/App", '"tests/support/Process.h"')

    def test_no_backend_knows_what_stands_above_the_ports(self):
        for room in ("Icu", "Linux", "Qt", "Simulated", "X11"):
            self.expect_allowed(f"src/Platform/{room}", '"Ports/MainLoop.h"', "<string>")
            self.expect_refused(f"src/Platform/{room}", '"Models/Tasks/TaskOrder.h"', '"Views/Kit/Painting.h"',
                                '"Controllers/TaskbarPanel.h"', '"App/Startup.h"')

    def test_a_backend_keeps_to_its_own_room(self):
        self.expect_allowed("src/Platform/X11", '"Platform/Linux/ApplicationCatalogue.h"', "<xcb/xcb.h>", "<glib.h>",
                            "<unistd.h>")
        self.expect_refused("src/Platform/X11", '"Platform/Linux/IconTheme.h"', '"Platform/Qt/QtDialogs.h"',
                            '"Toolkit/Symbols.h"', "<QImage>")
        self.expect_allowed("src/Platform/Qt", '"Toolkit/Symbols.h"', "<QImage>", "<sys/timerfd.h>")
        self.expect_refused("src/Platform/Qt", '"Platform/Linux/IconTheme.h"', "<gio/gio.h>", "<xcb/xcb.h>")
        self.expect_allowed("src/Platform/Simulated", '"Platform/Icu/IcuText.h"')
        self.expect_refused("src/Platform/Simulated", '"Platform/X11/Atoms.h"', "<unistd.h>", "<QString>")
        self.expect_allowed("src/Platform/Icu", "<unicode/coll.h>")
        self.expect_refused("src/Platform/Icu", '"Platform/Simulated/VirtualLoop.h"', "<glib.h>")

    def test_linux_without_x11_stays_that(self):
        self.expect_allowed("src/Platform/Linux", "<gio/gio.h>", "<pulse/pulseaudio.h>", "<unistd.h>")
        self.expect_refused("src/Platform/Linux", '"Platform/X11/Atoms.h"', "<xcb/xcb.h>", "<xcb/randr.h>",
                            "<X11/Xlib.h>", "<QString>", '"Toolkit/Symbols.h"')

    def test_our_own_headers_are_spelled_from_one_place(self):
        self.expect_refused("src/Models/Tasks", '"TaskOrder.h"', '"Tasks/TaskOrder.h"', '"../Tasks/TaskOrder.h"',
                            '"src/Models/Tasks/TaskOrder.h"', '"tests/support/Process.h"',
                            '"Models/../Views/Kit/Painting.h"', '"QString"', '"vector"')
        for folder in ("tests/support", "bench", "fuzz", "tools/desktop"):
            self.expect_allowed(folder, '"tests/support/Process.h"', '"Models/Tasks/TaskOrder.h"', "<QTest>")
            self.expect_refused(folder, '"Process.h"', '"support/Process.h"', '"../support/Process.h"',
                                '"tests/support/Missing.h"', '"src/Ports/MainLoop.h"')

    def test_an_include_is_seen_however_it_is_written(self):
        for line in ("#include <QString>", "  #  include<QString>", "#import <QString>", "#include_next <QString>",
                     "#if __has_include(<QString>)", "#elif defined(A) && __has_include( <QString> )",
                     "#include SOME_HEADER"):
            with self.subTest(line=line):
                self.write("src/Models/Planted.h", f"#pragma once\n{line}\n")
                status, text = self.check()
                self.assertEqual(status, 1)
                self.assertRegex(text, r"\Asrc/Models/Planted\.h:2: ")

    def test_a_comment_about_an_include_is_none(self):
        self.write("src/Models/Planted.h", "// #include <QString>\n")
        self.assertEqual(self.check()[0], 0)

    def test_a_file_in_no_known_room_is_reported(self):
        for file in ("src/Planted.cpp", "src/Platform/Planted.h", "src/Platform/Beside/Planted.mm", "src/Modelling/A.h"):
            with self.subTest(file=file):
                self.write(file, "#include <QString>\n")
                status, text = self.check()
                self.assertEqual(status, 1)
                self.assertRegex(text, rf"\A{file}:1: ")
                os.remove(os.path.join(self.root, file))

    def test_every_crossing_is_listed(self):
        self.write("src/Models/Planted.cpp", "#include <QString>\n#include <QImage>\n")
        self.write("src/Views/Planted.cpp", "#include <xcb/xcb.h>\n")
        self.assertEqual([line.split(" ")[0] for line in self.check()[1].splitlines()],
                         ["src/Models/Planted.cpp:1:", "src/Models/Planted.cpp:2:", "src/Views/Planted.cpp:1:"])


if __name__ == "__main__":
    unittest.main()
