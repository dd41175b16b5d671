#pragma once

#include <QLayout>

#include <memory>
#include <vector>

/// Places widgets side by side, in as many rows as the width asks for; hidden ones take no room.
class BandLayout : public QLayout
{
public:
    /// Pixels between neighbours in a row.
    static constexpr int gap = 8;

    explicit BandLayout(QWidget* parent);
    ~BandLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    Qt::Orientations expandingDirections() const override { return {}; }
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& area) override;

private:
    int arrange(const QRect& area, bool apply) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};
