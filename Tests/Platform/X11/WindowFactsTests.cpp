#include "Platform/X11/WindowFacts.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

/// Every atom with an id of its own, as a server would assign it.
AtomTable numberedAtoms() {
    AtomTable atoms;
    for (std::size_t index = 0; index < atomNames.size(); ++index) {
        atoms.set(static_cast<Atom>(index), static_cast<xcb_atom_t>(100 + index));
    }
    return atoms;
}

TEST(WindowKind, AWindowWithoutATypeIsStandardUnlessItIsTransient) {
    EXPECT_EQ(windowKind(numberedAtoms(), {}, false), WindowKind::standard);
    EXPECT_EQ(windowKind(numberedAtoms(), {}, true), WindowKind::auxiliary);
}

TEST(WindowKind, TheFirstKnownTypeCounts) {
    const AtomTable atoms = numberedAtoms();
    const xcb_atom_t unknown = 7;
    const xcb_atom_t normal = atoms[Atom::netWmWindowTypeNormal];
    const xcb_atom_t dialog = atoms[Atom::netWmWindowTypeDialog];
    EXPECT_EQ(windowKind(atoms, {unknown, normal, dialog}, false), WindowKind::standard);
    EXPECT_EQ(windowKind(atoms, {dialog, normal}, false), WindowKind::auxiliary);
    EXPECT_EQ(windowKind(atoms, {unknown}, false), WindowKind::standard);
    // An explicit type takes precedence over being transient.
    EXPECT_EQ(windowKind(atoms, {normal}, true), WindowKind::standard);
}

TEST(WindowKind, PanelsDesktopsAndMenusAreFurniture) {
    const AtomTable atoms = numberedAtoms();
    for (const Atom type : {Atom::netWmWindowTypeDesktop, Atom::netWmWindowTypeDock, Atom::netWmWindowTypePopupMenu,
                            Atom::netWmWindowTypeTooltip, Atom::netWmWindowTypeNotification}) {
        EXPECT_EQ(windowKind(atoms, {atoms[type]}, false), WindowKind::ignored);
    }
}

TEST(WindowKind, SplashScreensAndUtilitiesAreAuxiliary) {
    const AtomTable atoms = numberedAtoms();
    for (const Atom type : {Atom::netWmWindowTypeSplash, Atom::netWmWindowTypeUtility, Atom::netWmWindowTypeToolbar}) {
        EXPECT_EQ(windowKind(atoms, {atoms[type]}, false), WindowKind::auxiliary);
    }
}

TEST(WindowKind, AnAtomThatCouldNotBeInternedNamesNoType) {
    EXPECT_EQ(windowKind(AtomTable{}, {XCB_ATOM_NONE}, false), WindowKind::standard);
}

constexpr std::uint32_t resourceMask = 0x1fffff;

TEST(WindowOwner, TheServersWordCountsMoreThanTheClaim) {
    EXPECT_EQ(windowOwner(4711, {12}, 0x1400003, resourceMask), 4711);
}

TEST(WindowOwner, TheClaimStandsInWhereTheServerDoesNotKnow) {
    EXPECT_EQ(windowOwner(std::nullopt, {12}, 0x1400003, resourceMask), 12);
    EXPECT_EQ(windowOwner(0, {12}, 0x1400003, resourceMask), 12);
}

TEST(WindowOwner, AnUnknownOwnerIsTheSameForAllWindowsOfAClientAndNoProcess) {
    const ProcessIdentifier first = windowOwner(std::nullopt, {}, 0x1400003, resourceMask);
    EXPECT_LT(first, 0);
    EXPECT_EQ(windowOwner(std::nullopt, {0}, 0x1400fff, resourceMask), first);
    EXPECT_NE(windowOwner(std::nullopt, {}, 0x1600003, resourceMask), first);
}

TEST(WindowOwner, ClaimsThatNoProcessCanHaveAreNotBelieved) {
    EXPECT_LT(windowOwner(0xffffffff, {0x80000000}, 0x1400003, resourceMask), 0);
}

} // namespace
} // namespace platform::x11
