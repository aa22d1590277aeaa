#include "app/mainwindow/StatusPanels.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

// The status bar's panels, by their pixels.
class StatusPanelsTest final : public QObject
{
    Q_OBJECT

    // The first row of a panel's text, and the row on which its letters stand.
    static std::pair<int, int> inkOf(QLabel& panel)
    {
        const QImage picture = panel.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const int lineEnd = std::min(panel.height() - 2, panel.fontMetrics().height() + 2);
        const QRgb ground = picture.pixel(panel.width() - 4, panel.height() / 2);
        int top = lineEnd;
        int baseline = 0;
        for (int y = 2; y < lineEnd; ++y) {
            for (int x = 2; x < panel.width() - 2; ++x) {
                if (picture.pixel(x, y) != ground) {
                    top = std::min(top, y);
                    baseline = y + 1;
                }
            }
        }
        return {top, baseline};
    }

    QStatusBar m_bar;
    std::unique_ptr<app::StatusPanels> m_panels;

private slots:
    void initTestCase()
    {
        m_panels = std::make_unique<app::StatusPanels>(m_bar);
        m_bar.resize(600, m_bar.sizeHint().height());
        m_bar.show();
    }

    void theTextStandsInTheMiddle_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("first") << QStringLiteral("StatusBar1_1");
        QTest::newRow("second") << QStringLiteral("StatusBar1_2");
    }
    void theTextStandsInTheMiddle()
    {
        QFETCH(QString, name);
        auto* panel = m_bar.findChild<QLabel*>(name);
        panel->setText(QStringLiteral("HEM"));
        const QFontMetrics metrics = panel->fontMetrics();
        const int middle = (panel->height() - metrics.height()) / 2 + metrics.ascent();
        const int baseline = inkOf(*panel).second;
        QVERIFY2(std::abs(baseline - middle) <= 1, qPrintable(QStringLiteral("%1, not %2").arg(baseline).arg(middle)));
    }

    // A reply shown whole may carry its line end.
    void ofSeveralLinesTheFirstStandsWhereASingleOneWould()
    {
        auto* panel = m_bar.findChild<QLabel*>("StatusBar1_1");
        m_panels->setStatusText("HEM");
        const int alone = inkOf(*panel).first;
        m_panels->setStatusText("HEM\r\nnext");
        QCOMPARE(inkOf(*panel).first, alone);
    }
};

static const testsupport::RunnableTest<StatusPanelsTest> kRunnable;
#include "StatusPanelsTest.moc"
