#include "Platform/X11/WindowRecord.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace korvane::platform::x11 {
namespace {

// Any numbers will do as long as they differ.
Atoms sampleAtoms()
{
    std::array<std::uint32_t, atomCount> numbers{};
    for (std::size_t i = 0; i < atomCount; ++i)
        numbers[i] = static_cast<std::uint32_t>(100 + i);
    return Atoms(numbers);
}

class Record : public ::testing::Test {
protected:
    Change bytes(Property property, Atom type, std::string_view text)
    {
        const std::vector<std::uint8_t> data(text.begin(), text.end());
        return record.apply(property, {atoms[type], 8, data}, atoms);
    }
    Change numbers(Property property, const std::vector<std::uint32_t> &values)
    {
        std::vector<std::uint8_t> data(values.size() * 4);
        std::memcpy(data.data(), values.data(), data.size());
        return record.apply(property, {1, 32, data}, atoms);
    }
    Change states(const std::vector<Atom> &list)
    {
        std::vector<std::uint32_t> values;
        for (const Atom atom : list)
            values.push_back(atoms[atom]);
        return numbers(Property::state, values);
    }
    Change absent(Property property) { return record.apply(property, {}, atoms); }

    Atoms atoms = sampleAtoms();
    WindowRecord record;
};

using WindowRecordTest = Record;

TEST_F(WindowRecordTest, TheNewerTitleGoesBeforeTheOlder)
{
    EXPECT_EQ(bytes(Property::legacyName, Atom::string, "caf\xe9"), Change::content);
    EXPECT_EQ(record.title, "caf\u00e9");
    EXPECT_EQ(bytes(Property::name, Atom::utf8String, "new"), Change::content);
    EXPECT_EQ(bytes(Property::legacyName, Atom::string, "old"), Change::none);
    EXPECT_EQ(record.title, "new");
    EXPECT_EQ(bytes(Property::name, Atom::utf8String, "new"), Change::none);
    // The older one is read again by whoever sees that the newer one is gone.
    absent(Property::name);
    EXPECT_FALSE(record.hasName);
    EXPECT_EQ(bytes(Property::legacyName, Atom::compoundText, "\x1b-F\xe1"), Change::content);
    EXPECT_EQ(record.title, "\u03b1");
}

TEST_F(WindowRecordTest, AShadedWindowIsNotMinimised)
{
    EXPECT_EQ(states({Atom::netWmStateHidden}), Change::content);
    EXPECT_TRUE(record.minimized);
    EXPECT_EQ(states({Atom::netWmStateHidden, Atom::netWmStateShaded}), Change::content);
    EXPECT_FALSE(record.minimized);
    EXPECT_EQ(states({Atom::netWmStateAbove}), Change::none);
}

TEST_F(WindowRecordTest, WhatDecidesWhetherItIsATaskIsStructure)
{
    EXPECT_EQ(states({Atom::netWmStateSkipTaskbar}), Change::structure);
    EXPECT_EQ(states({Atom::netWmStateSkipTaskbar, Atom::netWmStateModal}), Change::structure);
    EXPECT_EQ(states({Atom::netWmStateSkipTaskbar, Atom::netWmStateModal}), Change::none);
    EXPECT_EQ(numbers(Property::transientFor, {77}), Change::structure);
    EXPECT_EQ(numbers(Property::type, {atoms[Atom::netWmWindowTypeDock]}), Change::structure);
    EXPECT_EQ(record.kind, WindowKind::dock);
}

TEST_F(WindowRecordTest, TheFirstTypeThatIsKnownCounts)
{
    numbers(Property::type, {9999, atoms[Atom::netWmWindowTypeTooltip], atoms[Atom::netWmWindowTypeNormal]});
    EXPECT_EQ(record.kind, WindowKind::transitory);
    numbers(Property::type, {9999});
    EXPECT_EQ(record.kind, WindowKind::ordinary);
}

TEST_F(WindowRecordTest, AttentionComesFromTheStateAndFromTheHint)
{
    EXPECT_EQ(states({Atom::netWmStateDemandsAttention}), Change::content);
    EXPECT_TRUE(record.demandsAttention);
    EXPECT_EQ(numbers(Property::hints, {1U << 8}), Change::content);
    EXPECT_TRUE(record.urgent);
    EXPECT_EQ(numbers(Property::hints, {0}), Change::content);
    EXPECT_FALSE(record.urgent);
}

TEST_F(WindowRecordTest, OnlyTheStatesOfManagedWindowsCount)
{
    numbers(Property::managerState, {3, 0});
    EXPECT_EQ(record.managerState, 3U);
    numbers(Property::managerState, {77});
    EXPECT_EQ(record.managerState, 0U);
    absent(Property::managerState);
    EXPECT_FALSE(record.hasManagerState);
}

TEST_F(WindowRecordTest, NoValueBreaksIt)
{
    std::mt19937 random(1);
    for (int round = 0; round < 50'000; ++round) {
        std::vector<std::uint8_t> data(random() % 40);
        for (auto &byte : data)
            byte = static_cast<std::uint8_t>(random());
        constexpr int formats[] = {0, 8, 16, 32, 77};
        const auto property = static_cast<Property>(random() % propertyCount);
        const auto type = static_cast<std::uint32_t>(90 + random() % (atomCount + 20));
        record.apply(property, {type, formats[random() % 5], data}, atoms);
        EXPECT_LE(record.title.size(), 4096U * 4);
    }
}

}  // namespace
}  // namespace korvane::platform::x11
