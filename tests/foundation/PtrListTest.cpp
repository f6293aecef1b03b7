#include "PtrList.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

struct Item { int key; };

// Items live in a fixed array, so their addresses rise with their index.
class PtrListTest : public ::testing::Test {
protected:
    Item pool[8] = {{0}, {1}, {2}, {3}, {4}, {5}, {6}, {7}};

    void Fill(KV::PtrList<Item>& list, const std::vector<int>& indexes) {
        for (int i : indexes)
            list.Add(&pool[i]);
    }
    std::vector<int> Indexes(const KV::PtrList<Item>& list) const {
        std::vector<int> out;
        for (int i = 0; i < list.GetCount(); ++i)
            out.push_back(static_cast<int>(list.GetAt(i) - pool));
        return out;
    }
};

// Item 5 inserted at a position; past the end appends, into a full list grows it.
TEST_F(PtrListTest, InsertAt) {
    struct Case { std::vector<int> start; int at; std::vector<int> expected; };
    const Case cases[] = {{{1, 2}, 0, {5, 1, 2}}, {{1, 2}, 1, {1, 5, 2}}, {{1, 2}, 2, {1, 2, 5}},
                          {{1}, 9, {1, 5}}, {{1, 2, 3, 4}, 2, {1, 2, 5, 3, 4}}};
    for (const Case& c : cases) {
        KV::PtrList<Item> list;
        Fill(list, c.start);
        list.InsertAt(c.at, &pool[5]);
        EXPECT_EQ(Indexes(list), c.expected) << "at " << c.at;
    }
}

struct Counted {
    explicit Counted(int& deaths) : deaths(deaths) {}
    ~Counted() { ++deaths; }
    int& deaths;
};

TEST(PtrListOwnership, DeleteAllDeletesClearDoesNot) {
    int deaths = 0;
    KV::PtrList<Counted> list;
    for (int i = 0; i < 6; ++i)
        list.Add(new Counted(deaths));
    Counted* kept = list.RemoveAt(0);
    list.DeleteAll();
    EXPECT_EQ(std::make_tuple(deaths, list.GetCount(), list.GetCapacity()), std::make_tuple(5, 0, 0));
    list.Add(kept);
    list.Clear();
    EXPECT_EQ(deaths, 5);
    delete kept;
    EXPECT_EQ((std::pair<Counted*, Counted*>(list.GetAt(0), list.RemoveAt(0))), (std::pair<Counted*, Counted*>()));
}

} // namespace
