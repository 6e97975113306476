# SPDX-License-Identifier: MIT
import configparser
import os
import pathlib
import re
import shlex
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

SOURCE = pathlib.Path(os.environ["TEST_SOURCE"])
FILES = str(SOURCE / "packaging/com.fenwary.trivel3.Settings")
PICTURES = "https://fenwary.example/trivel3/pictures/"


def run(*command, **environment):
    """The exit status, and all that was said."""
    ended = subprocess.run(command, env=os.environ | environment, text=True, errors="replace",
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return ended.returncode, ended.stdout


def metadata():
    return ElementTree.parse(FILES + ".metainfo.xml").getroot()


def plain(text):
    return " ".join(text.replace("`", "").split())


def releases_of_changelog():
    """Of each release: version, date, and its paragraphs and list items in their order."""
    releases = []
    text = (SOURCE / "CHANGELOG.md").read_text()
    for heading, body in re.findall(r"^## (.*)\n((?:(?!## ).*\n)*)", text, re.MULTILINE):
        version, date = re.fullmatch(r"(\S+) \((\S+)\)", heading).groups()
        blocks = re.split(r"\n\s*\n|\n(?=- )", body.strip())
        releases.append((version, date, [plain(block.removeprefix("- ")) for block in blocks]))
    return releases


def releases_of_metadata():
    return [(release.get("version"), release.get("date"),
             [plain(block.text) for block in release.iter() if block.tag in ("p", "li")])
            for release in metadata().iter("release")]


class Packaging(unittest.TestCase):
    maxDiff = None

    def desktopEntryIsValid(self):
        self.assertEqual(run("desktop-file-validate", FILES + ".desktop"), (0, ""))

    def desktopEntryUsesOptionsThatTheProgramHas(self):
        entry = configparser.ConfigParser(interpolation=None, delimiters=["="])
        entry.optionxform = str
        entry.read(FILES + ".desktop")
        status, offered = run(os.environ["TEST_PROGRAM"], "--help")
        self.assertEqual(status, 0, offered)
        actions = [name for name in entry["Desktop Entry"].get("Actions", "").split(";") if name]
        self.assertEqual({"Desktop Entry"} | {"Desktop Action " + name for name in actions}, set(entry.sections()))
        for section in entry.sections():
            program, *arguments = shlex.split(entry[section]["Exec"])
            self.assertEqual(program, "trivel3-settings")
            if "%U" in arguments:
                self.assertIn("Positionals:", offered)
            for option in (argument for argument in arguments if argument.startswith("--")):
                self.assertRegex(offered, rf"(?m)(^|[\s,]){re.escape(option.split('=')[0])}([\s,]|$)")

    def metadataIsValid(self):
        status, said = run("appstreamcli", "validate", "--strict", "--no-net", "--no-color", FILES + ".metainfo.xml")
        if status != 0:
            # That a component has a developer is not known before version 1.0.
            self.assertRegex(run("appstreamcli", "--version")[1], r"version: 0\.", said)
            told = re.findall(r"^[EWI]: .*: (.*)$", said, re.MULTILINE)
            self.assertEqual(told, ["unknown-tag developer"], said)

    def newestReleaseIsTheProjects(self):
        self.assertEqual(releases_of_changelog()[0][0], os.environ["TEST_VERSION"])

    def releasesAreThoseOfTheChangelog(self):
        self.assertEqual(releases_of_metadata(), releases_of_changelog())

    def reportsAreKnownByTheirNames(self):
        with tempfile.TemporaryDirectory() as folder:
            data = pathlib.Path(folder, "data")
            packages = data / "mime/packages"
            packages.mkdir(parents=True)
            (packages / "settings.xml").write_bytes(pathlib.Path(FILES + ".mime.xml").read_bytes())
            known = {"XDG_DATA_HOME": str(data)}
            self.assertEqual(run("update-mime-database", str(data / "mime"), **known), (0, ""))
            for content in (b"bplist00\xd0\x08", b"nothing known",
                            b'<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict/></plist>\n'):
                self.assertEqual(self.type_of(folder, "Trivel.plist", content, known), "application/x-trivel3-report")
                self.assertEqual(self.type_of(folder, "A-5.trivel.plist", content, known),
                                 "application/x-trivel3-report")
                self.assertNotEqual(self.type_of(folder, "Other.plist", content, known),
                                    "application/x-trivel3-report")

    def type_of(self, folder, name, content, environment):
        file = pathlib.Path(folder, name)
        file.write_bytes(content)
        status, said = run("gio", "info", "--attributes=standard::content-type", str(file), **environment)
        self.assertEqual(status, 0, said)
        return re.search(r"standard::content-type: (\S+)", said)[1]

    def screenshotsAreThePicturesOfTheDocuments(self):
        shots = list(metadata().iter("screenshot"))
        self.assertTrue(shots)
        for shot in shots:
            self.assertTrue(shot.findtext("caption"))
            image = shot.find("image")
            self.assertTrue(image.text.startswith(PICTURES), image.text)
            picture = (SOURCE / "docs/pictures" / image.text.removeprefix(PICTURES)).read_bytes()
            width, height = struct.unpack(">II", picture[16:24])
            self.assertEqual((image.get("width"), image.get("height")), (str(width), str(height)), image.text)


if __name__ == "__main__":
    unittest.main()
