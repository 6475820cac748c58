// SPDX-License-Identifier: MIT
// Zip files that are damaged, or made to do harm.
#include "tests/unit/handover/two_devices.h"

#include <set>

namespace handover {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class HarmfulZip : public TwoDevices {
protected:
    /// Lets Python make a zip file: `z` writes into it, `i` is an entry with a harmless name, `d` becomes its bytes.
    void Make(const std::string& lines) {
        Stick.Put("make.py", "import io, sys, zipfile, warnings\nwarnings.simplefilter('ignore')\n"
                             "b = io.BytesIO()\nz = zipfile.ZipFile(b, 'w', zipfile.ZIP_DEFLATED)\n"
                             "i = zipfile.ZipInfo('notes.txt')\n"
                             "z.writestr('fine.txt', 'A|B\\n1|2\\n' * 40)\n" +
                                 lines + "\nz.close()\nd = b.getvalue() if 'd' not in dir() else d(b.getvalue())\n" +
                                 "open('" + Stick.Path("a.zip") + "', 'wb').write(d)\n");
        ASSERT_EQ(std::system(("python3 '" + Stick.Path("make.py") + "'").c_str()), 0);
    }

    /// Returns why it was refused; nothing was written.
    std::string Refused() {
        const std::string why = Import().WhyNot;
        EXPECT_THAT(Fates, IsEmpty());
        EXPECT_EQ(Other.Entries(), 0) << "something was written";
        return why;
    }
};

TEST_F(HarmfulZip, OneOfAnotherToolIsTakenIn) {
    Make("z.writestr('Databases/', '')\nz.writestr('q.txt', 'A\\n')");
    EXPECT_EQ(Import().WhyNot, "");
    EXPECT_EQ(Other.Bytes("Quorin/q.txt"), "A\n");
}

TEST_F(HarmfulZip, NamesThatLeadElsewhereAreRefused) {
    for (const char* const name : {"../out.txt",
                                   "/etc/out.txt",
                                   "a/../out.txt",
                                   "Databases/../../out.sqlite",
                                   "journal/../out.jsonl",
                                   "..\\\\out.txt",
                                   "C:out.txt",
                                   "C:\\\\out.txt",
                                   "Databases//a.sqlite",
                                   "./out.txt",
                                   "Databases/a/b.sqlite",
                                   ".quorin.lock",
                                   ".txt",
                                   "a.txt.",
                                   "a.txt ",
                                   "a\\x01.txt",
                                   "Quorin/a.txt",
                                   "settings.ini",
                                   "run.sh",
                                   "journal/a.txt",
                                   "Databases/a.txt",
                                   "folder/",
                                   "a.txt/"}) {
        Make(std::string("z.writestr('") + name + "', 'x')");
        EXPECT_THAT(Refused(), HasSubstr("can't be taken in: ")) << name;
    }
}

TEST_F(HarmfulZip, ANulInANameIsRefused) {
    Make("z.writestr('a.txt_.txt', 'x')\nd = lambda s: s.replace(b'a.txt_', b'a.txt\\0')");
    EXPECT_THAT(Refused(), HasSubstr("no name of a file"));
}

TEST_F(HarmfulZip, ALinkIsRefused) {
    Make("i.create_system = 3\ni.external_attr = 0o120777 << 16\nz.writestr(i, '/etc/passwd')");
    EXPECT_THAT(Refused(), HasSubstr("a link or another special file"));
}

TEST_F(HarmfulZip, NamesThatAreThereTwiceAreRefused) {
    Make("z.writestr('notes.txt', 'a')\nz.writestr('notes.txt', 'b')");
    EXPECT_THAT(Refused(), HasSubstr("is there twice"));
    Make("z.writestr('notes.txt', 'a')\nz.writestr('NOTES.txt', 'b')");
    EXPECT_THAT(Refused(), HasSubstr("is there twice"));
    Make("z.writestr('\\u00e4.txt', 'a')\nz.writestr('\\u00c4.txt', 'b')");
    EXPECT_THAT(Refused(), HasSubstr("is there twice"));
}

TEST_F(HarmfulZip, ABombIsRefused) {
    Make("z.writestr('bomb.txt', b'0' * (30 << 20))");
    EXPECT_THAT(Refused(), HasSubstr("more than 200 times its size"));
}

TEST_F(HarmfulZip, FilesThatShareTheirBytesAreRefused) {
    Make("z.writestr('notes.txt', bytes(range(256)) * 9)\n"
         "for n in range(9):\n    c = zipfile.ZipInfo('notes%d.txt' % n)\n    o = z.getinfo('notes.txt')\n"
         "    c.__dict__ if hasattr(c, '__dict__') else None\n"
         "    c.compress_type, c.CRC, c.file_size, c.compress_size, c.header_offset = o.compress_type, o.CRC, "
         "o.file_size, 3000, o.header_offset\n    z.filelist.append(c)\n");
    EXPECT_THAT(Refused(), HasSubstr("one upon the other"));
}

TEST_F(HarmfulZip, AnEncryptedOneIsRefused) {
    Make("z.writestr('notes.txt', 'x')\n"
         "def d(s):\n    s = bytearray(s)\n    s[s.find(b'PK\\x01\\x02') + 8] |= 1\n    return bytes(s)");
    EXPECT_THAT(Refused(), HasSubstr("it is encrypted"));
}

TEST_F(HarmfulZip, AnUnknownPackingIsRefused) {
    Make("i.compress_type = zipfile.ZIP_LZMA\nz.writestr(i, 'x')");
    EXPECT_THAT(Refused(), HasSubstr("not read here"));
}

TEST_F(HarmfulZip, ANewerOneIsRefused) {
    Make("z.comment = b'Quorin data 2'");
    EXPECT_THAT(Refused(), HasSubstr("a newer program has written it"));
}

TEST_F(HarmfulZip, EachCutIsRefused) {
    Export(Root);
    const std::string whole = Stick.Bytes("a.zip");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Stick.Put("a.zip", whole.substr(0, length));
        EXPECT_THAT(Refused(), HasSubstr("can't be taken in: ")) << length;
    }
}

TEST_F(HarmfulZip, AWrongByteOfAContentIsRefused) {
    Export(Root);
    const std::string whole = Stick.Bytes("a.zip");
    const std::size_t first = whole.find("drivers.txt") + std::string("drivers.txt").size();
    for (std::size_t at = first; at < first + 20; ++at) {
        std::string spoilt = whole;
        spoilt[at] = static_cast<char>(spoilt[at] ^ 0x10);
        Stick.Put("a.zip", spoilt);
        EXPECT_THAT(Refused(), HasSubstr("\"drivers.txt\": it is damaged")) << at;
    }
}

TEST_F(HarmfulZip, AnyWrongByteIsRefusedOrChangesNoContent) {
    Export(Root);
    const std::string whole = Stick.Bytes("a.zip");
    std::multiset<std::string> contents;
    for (const auto& [name, bytes] : Content(Root))
        contents.insert(bytes);
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const char mask : {'\x01', '\x80'}) {
            std::string spoilt = whole;
            spoilt[at] = static_cast<char>(spoilt[at] ^ mask);
            Stick.Put("a.zip", spoilt);
            if (Import().WhyNot.empty()) { // a name or a time of it
                for (const auto& [name, bytes] : Content(Other))
                    EXPECT_EQ(contents.count(bytes), 1u) << at << ": " << name;
                std::filesystem::remove_all(Other.Path("Quorin"));
            }
            EXPECT_EQ(Other.Entries(), 0) << at;
        }
}

TEST_F(HarmfulZip, WhatIsNoZipFileIsRefused) {
    Stick.Put("a.zip", "of a person\n");
    EXPECT_THAT(Refused(), HasSubstr("it is no zip file, or was cut off"));
    std::filesystem::remove(Stick.Path("a.zip"));
    EXPECT_THAT(Refused(), HasSubstr("can't be read: No such file"));
    std::filesystem::create_directory(Stick.Path("a.zip"));
    EXPECT_THAT(Refused(), HasSubstr("can't be"));
}

} // namespace

} // namespace handover
