#include "KVPointerList.h"
#include "KVObjectPointerList.h"
#include "PtrList.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>
#include <vector>

namespace {

// Distinct addresses to store; the lists never dereference them.
int slots[100];
void* P(int i) { return &slots[i]; }

// Every list grows by one rule: 4, 8, 16, then steps of 16.
TEST(Growth, FourEightSixteenThenStepsOfSixteen) {
    const std::pair<int, int> addsToCapacity[] = {{0, 0}, {1, 4}, {5, 8}, {9, 16}, {17, 32}, {33, 48}, {100, 112}};
    for (const auto& [adds, capacity] : addsToCapacity) {
        KVPointerList pointers;
        KV::PtrList<int> inserted;
        for (int i = 0; i < adds; ++i) {
            pointers.Add(P(i));
            inserted.InsertAt(0, &slots[i]);
        }
        EXPECT_EQ(std::make_pair(pointers.GetCapacity(), inserted.GetCapacity()), std::make_pair(capacity, capacity)) << adds << " adds";
    }
}

template <typename List> std::vector<int> Ids(const List& list) {
    std::vector<int> ids;
    for (int i = 0; i < list.GetCount(); ++i)
        ids.push_back(static_cast<int>(static_cast<int*>(list.GetAt(i)) - slots));
    return ids;
}

TEST(KVPointerListTest, RemoveAtShiftsAndRejectsOutsideItems) {
    KVPointerList list;
    for (int id : {1, 2, 3, 4, 5})
        EXPECT_EQ(list.Add(P(id)), id - 1);
    EXPECT_EQ(list.RemoveAt(1), P(2));
    EXPECT_EQ(std::make_tuple(list.GetAt(4), list.RemoveAt(4), list.RemoveAt(-1)), std::make_tuple(nullptr, nullptr, nullptr));
    EXPECT_EQ(Ids(list), (std::vector<int>{1, 3, 4, 5}));
}

// Counts destructions, to show which operations delete items and which do not.
struct Tracked {
    explicit Tracked(int& deaths) : deaths(deaths) {}
    ~Tracked() { ++deaths; }
    int& deaths;
};

TEST(KVObjectPointerListTest, TypedAccessAndHolderDeletesItems) {
    int deaths = 0;
    auto list = std::make_unique<KVObjectPointerList<Tracked>>();
    Tracked* a = new Tracked(deaths);
    Tracked* b = new Tracked(deaths);
    list->Add(a);
    list->Add(b);
    EXPECT_EQ(list->GetAt(1), b);
    EXPECT_EQ(list->Remove(a), 0);
    EXPECT_EQ(std::make_pair(list->GetAt(0), deaths), std::make_pair(b, 0)) << "removing never deletes";
    delete a;

    // Clear through the base: the virtual override runs and frees only the array.
    KVPointerList* base = list.get();
    base->Clear();
    EXPECT_EQ(std::make_pair(list->GetCount(), deaths), std::make_pair(0, 1));
    delete b;

    // The holder pattern: the holder deletes what GetAt(0..count-1) hands out. The list deletes
    // nothing, neither when cleared nor when destroyed.
    std::vector<Tracked*> added;
    for (int i = 0; i < 5; ++i) {
        added.push_back(new Tracked(deaths));
        list->Add(added.back());
    }
    std::vector<Tracked*> handedOut;
    for (int i = 0; i < list->GetCount(); ++i)
        handedOut.push_back(list->GetAt(i));
    EXPECT_EQ(handedOut, added);
    list->Clear();
    for (Tracked* t : added)
        list->Add(t);
    list.reset();
    EXPECT_EQ(deaths, 2);
    for (Tracked* t : handedOut)
        delete t;
}

} // namespace
