// SPDX-License-Identifier: Apache-2.0
#include "site/ReadSite.h"

#include <gmock/gmock.h>

using inventory::IpMethod;
using site::Match;
using site::Place;
using site::Site;
using site::SiteError;
using testing::ElementsAre;

namespace {

using namespace base::literals;

const std::string Example = R"(version: 1
defaults: {mode: static, mask: 255.255.255.0, gateway: none}
adapters:                         # checked, never changed
  line0: {address: 192.168.10.1/24, mtu: 1500}
cameras:
  left:                           # the place; also the camera's user name, unless name says otherwise
    match: {adapter: line0}       # or serial, mac, name; all that are given must hold
    model: FC-2400M               # optional: refuse any other here
    address: 192.168.10.21        # mode static; mask and gateway as in defaults
  right: {match: {serial: "24010018"}, mode: dhcp}
unlisted: warn                    # cameras of no place: ignore, warn or fail
)";

/// "3:14 ...", as a text that is refused is told; empty when it is taken.
std::string refusal(const std::string& text)
{
    try {
        site::readSite(text);
    } catch (const SiteError& error) {
        return std::to_string(error.line()) + ":" + std::to_string(error.column()) + " " +
               error.sentence().english();
    }
    return {};
}

/// A site with these places, each in a line of its own from the fourth on.
std::string siteWith(const std::string& places)
{
    return "version: 1\ndefaults: {mask: 255.255.255.0}\ncameras:\n" + places;
}

Place onlyPlace(const std::string& place)
{
    const Site site = site::readSite(siteWith(place));
    EXPECT_EQ(site.places.size(), 1u);
    return site.places.at(0);
}

struct Refused
{
    const char* name;
    std::string text;
    std::string refusal; ///< As refusal() tells it.
};

void PrintTo(const Refused& each, std::ostream* out)
{
    *out << each.text;
}

std::string nameOf(const testing::TestParamInfo<Refused>& info)
{
    return info.param.name;
}

class RefusedSite : public testing::TestWithParam<Refused>
{};

} // namespace

TEST(ReadSite, TakesWhatAPersonWrites)
{
    const Site site = site::readSite(Example);
    EXPECT_THAT(site.adapters, ElementsAre(site::AdapterRule{
                                   "line0", inventory::AdapterAddress{"192.168.10.1"_ip, 24}, 1500}));
    EXPECT_THAT(site.places,
                ElementsAre(Place{"left",
                                  Match{"line0", {}, {}, {}},
                                  "FC-2400M",
                                  IpMethod::Static,
                                  {"192.168.10.21"_ip, "255.255.255.0"_ip, {}},
                                  "left"},
                            Place{"right", Match{{}, "24010018", {}, {}}, {}, IpMethod::Dhcp, {}, "right"}));
    EXPECT_EQ(site.unlisted, site::Unlisted::Warn);
}

TEST(ReadSite, TakesJson)
{
    const Site site = site::readSite(
        R"({"version": 1, "cameras": {"left": {"match": {"serial": "7"}, "mode": "lla", "name": "keep"}},
            "unlisted": "fail"})");
    EXPECT_THAT(site.places,
                ElementsAre(Place{"left", Match{{}, "7", {}, {}}, {}, IpMethod::LinkLocal, {}, {}}));
    EXPECT_EQ(site.unlisted, site::Unlisted::Fail);
}

TEST(ReadSite, TakesASiteWithoutCameras)
{
    EXPECT_EQ(site::readSite("version: 1\ncameras: {}\nunlisted: ignore\n"),
              (Site{{}, {}, site::Unlisted::Ignore}));
}

TEST(ReadSite, TakesMarksOfOneDocumentLineEndsOfAllSystemsAndAByteOrderMark)
{
    const Site wanted = site::readSite(Example);
    std::string dos = "\xEF\xBB\xBF---\n" + Example + "...\n";
    for (std::size_t at = 0; (at = dos.find('\n', at)) != std::string::npos; at += 2)
        dos.replace(at, 1, "\r\n");
    EXPECT_EQ(site::readSite(dos), wanted);
}

TEST(ReadSite, LeavesASerialNumberTheTextThatItIs)
{
    EXPECT_EQ(onlyPlace("  a: {match: {serial: 24010018}, mode: dhcp}").match.serial, "24010018");
    EXPECT_EQ(onlyPlace("  a: {match: {serial: 007}, mode: dhcp}").match.serial, "007");
    EXPECT_EQ(onlyPlace("  a: {match: {serial: 0x1F}, mode: dhcp}").match.serial, "0x1F");
    EXPECT_EQ(onlyPlace("  a: {match: {serial: true}, mode: dhcp}").match.serial, "true");
    EXPECT_EQ(onlyPlace("  a: {match: {serial: \"null\"}, mode: dhcp}").match.serial, "null");
}

TEST(ReadSite, TakesAMacInEverySpelling)
{
    const base::MacAddress mac{{0x02, 0x1A, 0, 0, 0, 0x0B}};
    for (const char* text : {"02:1A:00:00:00:0B", "02-1a-00-00-00-0b", "021a0000000B"})
        EXPECT_EQ(onlyPlace("  a: {match: {mac: " + std::string(text) + "}, mode: dhcp}").match.mac, mac);
}

TEST(ReadSite, NamesACameraAfterItsPlaceUnlessNameSaysOtherwise)
{
    const std::string rest = ": {match: {mac: 020000000001}, mode: dhcp";
    EXPECT_EQ(onlyPlace("  left" + rest + "}").userName, "left");
    EXPECT_EQ(onlyPlace("  left" + rest + ", name: up}").userName, "up");
    EXPECT_EQ(onlyPlace("  left" + rest + ", name: ''}").userName, "");
    EXPECT_EQ(onlyPlace("  left" + rest + ", name: keep}").userName, std::nullopt);
    EXPECT_EQ(onlyPlace("  keep" + rest + "}").userName, "keep");
    EXPECT_EQ(onlyPlace("  exactly-15bytes" + rest + "}").userName, "exactly-15bytes");
    EXPECT_EQ(onlyPlace("  more-than-15byte" + rest + ", name: keep}").userName, std::nullopt);
    EXPECT_EQ(onlyPlace("  more-than-15byte" + rest + ", name: short}").userName, "short");
}

TEST(ReadSite, LetsAPlaceSayOtherwiseThanTheDefaults)
{
    const Site site = site::readSite(R"(version: 1
defaults: {mode: dhcp, mask: 255.255.0.0, gateway: 10.0.0.1}
cameras:
  a: {match: {serial: a}}
  b: {match: {serial: b}, mode: static, address: 10.0.0.2}
  c: {match: {serial: c}, mode: static, address: 10.0.0.3, mask: 255.255.255.0, gateway: none}
  d: {match: {serial: d}, mode: static, address: 10.0.0.4, gateway: 0.0.0.0}
  e: {match: {serial: e}, mode: static, address: 10.0.0.5, gateway: 10.0.9.9}
)");
    std::vector<base::IpSettings> all;
    for (const Place& place : site.places)
        all.push_back(place.ip);
    EXPECT_THAT(all, ElementsAre(base::IpSettings{},
                                 base::IpSettings{"10.0.0.2"_ip, "255.255.0.0"_ip, "10.0.0.1"_ip},
                                 base::IpSettings{"10.0.0.3"_ip, "255.255.255.0"_ip, {}},
                                 base::IpSettings{"10.0.0.4"_ip, "255.255.0.0"_ip, {}},
                                 base::IpSettings{"10.0.0.5"_ip, "255.255.0.0"_ip, "10.0.9.9"_ip}));
}

TEST(ReadSite, TakesPlacesThatDifferInSomethingThatTheyAreMatchedBy)
{
    EXPECT_EQ(refusal(siteWith("  a: {match: {adapter: x}, mode: dhcp}\n"
                               "  b: {match: {adapter: y}, mode: dhcp}\n"
                               "  c: {match: {adapter: x, name: c}, mode: dhcp}\n"
                               "  d: {match: {name: c}, mode: dhcp}\n"
                               "  e: {match: {adapter: x, name: ''}, mode: dhcp}\n"
                               "  f: {match: {adapter: x, serial: f}, mode: dhcp}\n"
                               "  g: {match: {adapter: x, mac: 020000000001}, mode: dhcp}\n")),
              "");
}

TEST_P(RefusedSite, IsToldWhereItIsWrongAndWhatIsAllowed)
{
    EXPECT_EQ(refusal(GetParam().text), GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    Members, RefusedSite,
    testing::Values(
        Refused{"NothingAtAll", "",
                "1:1 the file has no members here; a mapping is needed, {} when it is to have none"},
        Refused{"AnUnknownMember", "version: 1\ncamera: {}\n",
                "2:1 \"camera\" is unknown here; allowed are version, defaults, adapters, cameras, unlisted"},
        Refused{"AnUnknownMemberOfDefaults", "version: 1\ndefaults: {address: 10.0.0.1}\ncameras: {}\n",
                "2:12 \"address\" is unknown here; allowed are mode, mask, gateway"},
        Refused{"AnUnknownMemberOfAnAdapter", "version: 1\nadapters: {line0: {ip: 1}}\ncameras: {}\n",
                "2:20 \"ip\" is unknown here; allowed are address, mtu"},
        Refused{
            "AnUnknownMemberOfAPlace", siteWith("  left:\n    match: {serial: a}\n    adress: 10.0.0.1\n"),
            "6:5 \"adress\" is unknown here; allowed are match, model, mode, address, mask, gateway, name"},
        Refused{"AnUnknownMemberOfAMatch", siteWith("  left: {match: {port: 1}}"),
                "4:18 \"port\" is unknown here; allowed are adapter, serial, mac, name"},
        Refused{"AMemberTwice", "version: 1\ncameras: {}\nversion: 1\n",
                "3:1 \"version\" is here twice, first in line 1; once is allowed"},
        Refused{"APlaceTwice",
                siteWith("  left: {match: {serial: a}, mode: dhcp}\n"
                         "  \"left\": {match: {serial: b}, mode: dhcp}\n"),
                "5:3 \"left\" is here twice, first in line 4; once is allowed"},
        Refused{"NoVersion", "cameras: {}\n", "1:1 version is missing here; it is needed"},
        Refused{"NoCameras", "version: 1\n", "1:1 cameras is missing here; it is needed"},
        Refused{"CamerasWithoutAValue", "version: 1\ncameras:\n",
                "2:1 cameras has no members here; a mapping is needed, {} when it is to have none"},
        Refused{"NoMatch", siteWith("  left: {mode: dhcp}"), "4:9 match is missing here; it is needed"},
        Refused{"AnEmptyMatch", siteWith("  left: {match: {}, mode: dhcp}"),
                "4:17 match has no members; one or more of adapter, serial, mac, name are needed"},
        Refused{"AMemberWithoutAName", siteWith("  ~: {match: {serial: a}, mode: dhcp}"),
                "4:3 A member has no name; a text is allowed, in quotes when it is \"null\" or \"~\""},
        Refused{"APlaceWithAnEmptyName", siteWith("  '': {match: {serial: a}, mode: dhcp}"),
                "4:3 place is an empty text; another one is needed"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Values, RefusedSite,
    testing::Values(
        Refused{"AnotherVersion", "version: 2\ncameras: {}\n",
                "1:10 version is unknown; the number 1 is allowed"},
        Refused{"AVersionThatIsAText", "version: \"1\"\ncameras: {}\n",
                "1:10 version is unknown; the number 1 is allowed"},
        Refused{"AnUnknownMode", siteWith("  left: {match: {serial: a}, mode: DHCP}"),
                "4:36 mode \"DHCP\" is unknown; allowed are static, dhcp, lla"},
        Refused{"AnUnknownUnlisted", "version: 1\ncameras: {}\nunlisted: no\n",
                "3:11 unlisted \"no\" is unknown; allowed are ignore, warn, fail"},
        Refused{"ASerialNumberThatIsNone", siteWith("  left: {match: {serial: null}, mode: dhcp}"),
                "4:18 serial has no text here; one is needed, in quotes when it is \"null\" or \"~\""},
        Refused{"AMappingForAText", siteWith("  left: {match: {serial: {}}, mode: dhcp}"),
                "4:26 serial has no text here; one is needed, in quotes when it is \"null\" or \"~\""},
        Refused{"AnEmptySerialNumber", siteWith("  left: {match: {serial: ''}, mode: dhcp}"),
                "4:26 serial is an empty text; another one is needed"},
        Refused{"AMacThatIsNone", siteWith("  left: {match: {mac: 02:00}, mode: dhcp}"),
                "4:23 mac \"02:00\" is no MAC address: twelve hexadecimal digits are allowed, the pairs "
                "separated by colons, dashes or nothing, such as 00:1A:2B:3C:4D:5E"},
        Refused{
            "AnAdapterWithoutPrefix", "version: 1\nadapters: {line0: {address: 192.168.10.1}}\ncameras: {}\n",
            "2:29 address \"192.168.10.1\" is no address with the length of its prefix; an IPv4 address, a "
            "slash and 1 to 32 are allowed, such as 192.168.10.1/24"},
        Refused{
            "AnAdapterWithTooLongAPrefix",
            "version: 1\nadapters: {line0: {address: 192.168.10.1/33}}\ncameras: {}\n",
            "2:29 address \"192.168.10.1/33\" is no address with the length of its prefix; an IPv4 address, "
            "a slash and 1 to 32 are allowed, such as 192.168.10.1/24"},
        Refused{"AnMtuThatIsNone", "version: 1\nadapters: {line0: {mtu: 9k}}\ncameras: {}\n",
                "2:25 mtu is no number of bytes; 68 to 65535 are allowed"},
        Refused{
            "ATooLongPlace", siteWith("  sixteen-bytes-xx: {match: {serial: a}, mode: dhcp}"),
            "4:3 place \"sixteen-bytes-xx\" cannot be its camera's name, as only 15 bytes of UTF-8 without "
            "a NUL can; it needs name: such a text, or keep"},
        Refused{"ATooLongName", siteWith("  left: {match: {serial: a}, mode: dhcp, name: sixteen-bytes-xx}"),
                "4:48 name \"sixteen-bytes-xx\" is too long with 16 bytes of UTF-8; 15 are allowed"},
        Refused{"ANameWithANul", siteWith("  left: {match: {serial: a}, mode: dhcp, name: \"a\\0b\"}"),
                std::string("4:48 name \"a\0b\" has a NUL in it, which ends a camera's name", 59)}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Addresses, RefusedSite,
    testing::Values(
        Refused{"AStaticPlaceWithoutAddress", siteWith("  left: {match: {serial: a}}"),
                "4:9 address is missing here, which mode static needs"},
        Refused{"AStaticPlaceWithoutMask",
                "version: 1\ncameras:\n  left: {match: {serial: a}, address: 10.0.0.1}\n",
                "3:9 mask is missing here and in defaults, which mode static needs"},
        Refused{"AnAddressWithDhcp", siteWith("  left: {match: {serial: a}, mode: dhcp, address: 10.0.0.1}"),
                "4:51 address goes with mode static only; here the mode is dhcp, which takes none"},
        Refused{"AGatewayWithLla", siteWith("  left: {match: {serial: a}, mode: lla, gateway: none}"),
                "4:50 gateway goes with mode static only; here the mode is lla, which takes none"},
        Refused{"NoAddress", siteWith("  left: {match: {serial: a}, address: 10.0.0.01}"),
                "4:39 address \"10.0.0.01\" is no IPv4 address: four numbers from 0 to 255 without leading "
                "zeros, "
                "joined by dots, are allowed, such as 192.168.1.20"},
        Refused{"NoMask", siteWith("  left: {match: {serial: a}, address: 10.0.0.1, mask: 255.0.255.0}"),
                "4:55 mask \"255.0.255.0\" is no subnet mask: only ones before zeros, in binary, are "
                "allowed, such "
                "as 255.255.255.0"},
        Refused{
            "ALoopbackAddress", siteWith("  left: {match: {serial: a}, address: 127.0.0.1}"),
            "4:39 address \"127.0.0.1\" is a loopback address, which no camera can have; 1 to 223 other than "
            "127 are allowed as the first number"},
        Refused{"TheSubnetsOwnAddress", siteWith("  left: {match: {serial: a}, address: 10.0.0.255}"),
                "4:39 address \"10.0.0.255\" is the broadcast address of its subnet with mask 255.255.255.0; "
                "10.0.0.1 to 10.0.0.254 are allowed"},
        Refused{
            "AGatewayElsewhere",
            siteWith("  left: {match: {serial: a}, address: 10.0.0.2, gateway: 10.0.1.1}"),
            "4:58 gateway \"10.0.1.1\" is not in the subnet of address 10.0.0.2 with mask 255.255.255.0; an "
            "address of that subnet is allowed, or 0.0.0.0 for no gateway"},
        Refused{
            "ADefaultGatewayElsewhere",
            "version: 1\ndefaults: {mask: 255.255.255.0, gateway: 10.0.1.1}\ncameras:\n"
            "  left: {match: {serial: a}, address: 10.0.0.2}\n",
            "4:39 gateway \"10.0.1.1\" is not in the subnet of address 10.0.0.2 with mask 255.255.255.0; an "
            "address of that subnet is allowed, or 0.0.0.0 for no gateway"},
        Refused{
            "AnAddressTwice",
            siteWith("  left: {match: {serial: a}, address: 10.0.0.1}\n"
                     "  right: {match: {serial: b}, address: 10.0.0.1}\n"),
            "5:40 places \"left\" (line 4) and \"right\" (line 5) have one address, 10.0.0.1; each needs its "
            "own"},
        Refused{
            "AnAdaptersAddress",
            "version: 1\nadapters: {line0: {address: 10.0.0.1/8}}\ndefaults: {mask: 255.0.0.0}\ncameras:\n"
            "  left: {match: {serial: a}, address: 10.0.0.1}\n",
            "5:39 address \"10.0.0.1\" is that of adapter line0 (line 2); another one is allowed"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    OneCameraForTwoPlaces, RefusedSite,
    testing::Values(
        Refused{
            "ByMac",
            siteWith("  left: {match: {mac: 020000000001}, mode: dhcp}\n"
                     "  right: {match: {mac: 02-00-00-00-00-01, name: x}, mode: dhcp}\n"),
            "5:18 places \"left\" (line 4) and \"right\" (line 5) have one camera, of MAC 02:00:00:00:00:01; "
            "one place is allowed for each"},
        Refused{"BySerial",
                siteWith("  left: {match: {serial: 5}, mode: dhcp}\n"
                         "  right: {match: {serial: \"5\", adapter: x}, mode: dhcp}\n"),
                "5:18 places \"left\" (line 4) and \"right\" (line 5) have one camera, of serial number "
                "\"5\"; one "
                "place is allowed for each"},
        Refused{
            "ByAdapter",
            siteWith("  left: {match: {adapter: x}, mode: dhcp}\n"
                     "  right: {match: {adapter: x}, mode: dhcp, model: M}\n"),
            "5:18 places \"left\" (line 4) and \"right\" (line 5) match the same cameras; each needs a match "
            "of its own"},
        Refused{
            "ByName",
            siteWith("  left: {match: {name: ''}, mode: dhcp}\n"
                     "  right: {match: {name: ''}, mode: dhcp}\n"),
            "5:18 places \"left\" (line 4) and \"right\" (line 5) match the same cameras; each needs a match "
            "of its own"}),
    nameOf);
