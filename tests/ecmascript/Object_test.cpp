// Script objects: the open-addressing property table and the property operations.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ecmascript/Interpreter.h"

namespace {

using namespace EcmaScript;

std::vector<std::string> Enumerate(CObject* object) {
    std::vector<std::string> names;
    TRefPtr<CPropertyEnumerator> enumerator = object->Enumerate();
    CName name;
    while (enumerator->Next(name)) names.push_back(Core::ToUtf8(name.GetText()));
    return names;
}

CName Name(const std::string& text) { return CName(Core::WidenLatin1(text)); }

TEST(PropertyTable, FindsEveryEntryAfterDeletionsAndGrowth) {
    TRefPtr<CPropertyTable> table = new CPropertyTable;
    for (int i = 0; i < 100; ++i) table->Add(Name("p" + std::to_string(i)), CValue::Integer(i), 0);
    EXPECT_EQ(table->GetCapacity(), 256);
    for (int i = 0; i < 100; i += 3) table->Remove(table->Find(Name("p" + std::to_string(i))));
    for (int i = 100; i < 140; ++i) table->Add(Name("p" + std::to_string(i)), CValue::Integer(i), 0);
    for (int i = 0; i < 140; ++i) {
        SPropertyEntry* entry = table->Find(Name("p" + std::to_string(i)));
        if (i < 100 && i % 3 == 0) {
            EXPECT_EQ(entry, nullptr) << i;
        } else {
            ASSERT_NE(entry, nullptr) << i;
            EXPECT_EQ(entry->pValue->GetNumber().GetInteger(), i);
        }
    }
    EXPECT_EQ(table->Find(Name("missing")), nullptr);
}

TEST(PropertyTable, StartsAtFourSlotsAndDoublesAtThreeQuarters) {
    TRefPtr<CPropertyTable> table = new CPropertyTable;
    EXPECT_EQ(table->GetCapacity(), 0);
    std::vector<int> capacities;
    for (int i = 0; i < 13; ++i) {
        table->Add(Name(std::string(1, static_cast<char>('a' + i))), CValue::Undefined(), 0);
        capacities.push_back(table->GetCapacity());
    }
    EXPECT_EQ(capacities, (std::vector<int>{4, 4, 4, 8, 8, 8, 16, 16, 16, 16, 16, 16, 32}));
}

class ObjectTest : public ::testing::Test {
protected:
    void TearDown() override { m_pInterpreter->Shutdown(); }
    CGlobalObject* Global() { return m_pInterpreter->GetGlobalObject(); }
    TRefPtr<CObject> NewObject() { return new CObject(Global(), Global()->GetObjectPrototype()); }

    TRefPtr<CInterpreter> m_pInterpreter = new CInterpreter;
};

TEST_F(ObjectTest, EnumeratesOwnPropertiesInSlotOrderWithoutDontEnum) {
    TRefPtr<CObject> object = NewObject();
    object->Put(Name("c"), CValue::Integer(3));
    object->Put(Name("a"), CValue::Integer(1));
    object->DefineValue(u"b", CValue::Integer(2), DontEnum);
    EXPECT_EQ(Enumerate(object), (std::vector<std::string>{"a", "c"}));
    TRefPtr<CObject> child = new CObject(Global(), object);
    child->Put(Name("own"), CValue::Null());
    EXPECT_EQ(Enumerate(child), std::vector<std::string>{"own"});
    EXPECT_EQ(child->Get(Name("a"))->GetNumber().GetInteger(), 1);
}

TEST_F(ObjectTest, HonoursReadOnlyAndDontDelete) {
    TRefPtr<CObject> object = NewObject();
    object->DefineValue(u"fixed", CValue::Integer(1), ReadOnly | DontDelete);
    object->Put(Name("fixed"), CValue::Integer(2));
    EXPECT_EQ(object->Get(Name("fixed"))->GetNumber().GetInteger(), 1);
    EXPECT_FALSE(object->Delete(Name("fixed")));
    EXPECT_TRUE(object->Delete(Name("absent")));
    TRefPtr<CObject> child = new CObject(Global(), object);
    EXPECT_FALSE(child->CanPut(Name("fixed")));
    child->Put(Name("fixed"), CValue::Integer(3));
    EXPECT_FALSE(child->HasProperty(Name("absent")));
    EXPECT_EQ(child->Get(Name("fixed"))->GetNumber().GetInteger(), 1);
    object->Define(Name("fixed"), CValue::Integer(4), 0, false);
    EXPECT_EQ(object->Get(Name("fixed"))->GetNumber().GetInteger(), 1);
    object->Define(Name("fixed"), CValue::Integer(4), 0, true);
    EXPECT_EQ(object->Get(Name("fixed"))->GetNumber().GetInteger(), 4);
}

TEST_F(ObjectTest, IndexNamesMeetTextNames) {
    TRefPtr<CObject> object = NewObject();
    object->Put(CName::FromIndex(12), CValue::Integer(7));
    EXPECT_EQ(object->Get(Name("12"))->GetNumber().GetInteger(), 7);
    EXPECT_EQ(Enumerate(object), std::vector<std::string>{"12"});
}

}  // namespace
