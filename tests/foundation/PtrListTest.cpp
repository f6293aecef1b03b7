#include "PtrList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace {

struct Item { int key; };

int ByKey(Item* a, Item* b) { return a->key < b->key ? -1 : (a->key > b->key ? 1 : 0); }

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

TEST_F(PtrListTest, EditingOperations) {
    struct Case {
        const char* name;
        std::vector<int> start;
        void (*edit)(KV::PtrList<Item>&, Item*);
        std::vector<int> expected;
    };
    const std::vector<Case> cases = {
        {"insert front", {1, 2}, [](KV::PtrList<Item>& l, Item* p) { l.InsertAt(0, &p[5]); }, {5, 1, 2}},
        {"insert middle", {1, 2}, [](KV::PtrList<Item>& l, Item* p) { l.InsertAt(1, &p[5]); }, {1, 5, 2}},
        {"insert end", {1, 2}, [](KV::PtrList<Item>& l, Item* p) { l.InsertAt(2, &p[5]); }, {1, 2, 5}},
        {"insert past end appends", {1}, [](KV::PtrList<Item>& l, Item* p) { l.InsertAt(9, &p[5]); }, {1, 5}},
        {"insert into full grows",
         {1, 2, 3, 4},
         [](KV::PtrList<Item>& l, Item* p) { l.InsertAt(2, &p[5]); },
         {1, 2, 5, 3, 4}},
        {"remove at", {1, 2, 3}, [](KV::PtrList<Item>& l, Item*) { l.RemoveAt(0); }, {2, 3}},
        {"remove at outside", {1, 2, 3}, [](KV::PtrList<Item>& l, Item*) { l.RemoveAt(3); }, {1, 2, 3}},
        {"remove first copy", {3, 1, 3}, [](KV::PtrList<Item>& l, Item* p) { l.Remove(&p[3]); }, {1, 3}},
        {"remove absent", {1, 2}, [](KV::PtrList<Item>& l, Item* p) { l.Remove(&p[7]); }, {1, 2}},
        {"set at", {1, 2}, [](KV::PtrList<Item>& l, Item* p) { l.SetAt(1, &p[6]); }, {1, 6}},
        {"set at outside", {1, 2}, [](KV::PtrList<Item>& l, Item* p) { l.SetAt(2, &p[6]); }, {1, 2}},
        {"swap", {1, 2, 3}, [](KV::PtrList<Item>& l, Item*) { l.Swap(0, 2); }, {3, 2, 1}},
        {"shrink", {1, 2, 3, 4, 5}, [](KV::PtrList<Item>& l, Item*) { l.SetCapacity(2); }, {1, 2}},
        {"sort by address", {4, 0, 7, 2, 2}, [](KV::PtrList<Item>& l, Item*) { l.Sort(); }, {0, 2, 2, 4, 7}},
        {"sort empty", {}, [](KV::PtrList<Item>& l, Item*) { l.Sort(); }, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        KV::PtrList<Item> list;
        Fill(list, c.start);
        c.edit(list, pool);
        EXPECT_EQ(Indexes(list), c.expected);
        using Ends = std::pair<Item*, Item*>;
        EXPECT_EQ(Ends(list.First(), list.Last()),
                  c.expected.empty() ? Ends() : Ends(&pool[c.expected.front()], &pool[c.expected.back()]));
    }
}

TEST_F(PtrListTest, FindUsesIdentityOrComparerFromStart) {
    KV::PtrList<Item> list;
    Fill(list, {3, 1, 3, 5});
    Item sameKey{5}; // a different object with an equal key
    EXPECT_EQ(std::vector<int>({list.Find(&pool[3]), list.Find(&pool[3], 1), list.Find(&pool[3], 3), list.Find(&pool[6]),
                                list.Find(&sameKey), list.Find(&sameKey, 0, ByKey)}),
              std::vector<int>({0, 2, -1, -1, -1, 3}));
    EXPECT_TRUE(list.Remove(&sameKey, ByKey));
    EXPECT_FALSE(list.Remove(&sameKey, ByKey));
    EXPECT_EQ(Indexes(list), (std::vector<int>{3, 1, 3}));
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
