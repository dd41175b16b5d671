#pragma once

#include "FieldSteps.h"
#include "ItemFixture.h"

/// A user in front of an item pane of this room. The collections' panes only write down that they were shown, unless a
/// test takes the real ones.
///
/// Besides the usual catalog there is a file STOCK with a field of each kind that the field pane treats in a way of its
/// own: CODE (STRING), PRICE (PACKED), SOLD (DATE), FLAGS (HEXADECIMAL), PIECES (INTEGER-4); and a table ITEMS over it
/// in the database SALES, whose column ARTICLE maps CODE. A table ITEMS in the database OTHER has nothing to do with it
/// but the name of a field.
class ItemTest : public ItemFixture
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// For the constructor: the collections show in their own grids, and takeShown has nothing to tell.
    void takeRealCollections() { m_recordsCollections = false; }

private:
    bool m_recordsCollections = true;
};
