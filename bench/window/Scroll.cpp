// A list of 100,000 rows in a native window, offscreen: one frame of scrolling, one click that selects. Time per frame.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWindow>

#include "host/window/QtLoopHost.h"
#include "host/window/QtPresenter.h"
#include "host/window/QtText.h"
#include "host/window/ViewSurface.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindow.h"

namespace {

constexpr std::int64_t kRows = 100'000;

class People : public NSObject, public NSTableViewDelegate, public NSTableViewDataSource {
public:
    std::int64_t numberOfRowsInTableView(NSTableView &) override { return kRows; }
    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column, std::int64_t row) override {
        auto cell = table.makeView<NSTableCellView>(column->identifier());
        if (!cell) {
            cell = make<NSTableCellView>(NSRect(0, 0, 100, 28));
            cell->setIdentifier(column->identifier());
            const auto box = make<NSButton>(NSRect(4, 6, 16, 16));
            box->setButtonType(NSButtonType::switchButton);
            const auto text = NSTextField::labelWithString("");
            text->setLineBreakMode(LineBreak::truncateTail);
            text->setFrame({26, 6, 70, 17});
            text->setAutoresizingMask(NSViewWidthSizable);
            cell->addSubview(box);
            cell->addSubview(text);
            cell->setTextField(text);
        }
        cell->textField()->setStringValue(NSString("Person number " + std::to_string(row * 7919 % kRows)));
        return cell;
    }
};

struct Window {
    Window() {
        host::setSystemFontFamily(QStringLiteral("DejaVu Sans"));
        TextMeasurer::install(std::make_shared<host::QtTextMeasurer>());
        const auto scroll = make<NSScrollView>(NSRect(0, 0, 1240, 720));
        table->setRowHeight(28);
        table->setAllowsMultipleSelection(true);
        for (const char *name : {"name", "phone", "email", "company", "birthday"}) {
            const auto column = make<NSTableColumn>(NSString(name));
            column->setWidth(230);
            table->addTableColumn(column);
        }
        table->setDelegate(people);
        table->setDataSource(people);
        scroll->setDocumentView(table);
        scroll->setHeaderView(table->headerView());
        window->contentView()->addSubview(scroll);
        table->reloadData();
        window->makeKeyAndOrderFront();
        surface = &presenter->mirrorOf(*window)->surface();
        const QWindow *native = surface->QWidget::window()->windowHandle();
        while (!native->isExposed())   // before that nothing is painted
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    // What one event brings about, up to the painted frame.
    void frame() {
        surface->syncParts();
        surface->repaint();
    }

    std::shared_ptr<QtLoopHost> loop = std::make_shared<QtLoopHost>();
    std::shared_ptr<host::QtPresenter> presenter = host::QtPresenter::install();
    std::shared_ptr<People> people = make<People>();
    std::shared_ptr<NSTableView> table = make<NSTableView>();
    std::shared_ptr<NSWindow> window = make<NSWindow>(NSRect(0, 0, 1240, 720));
    host::ViewSurface *surface = nullptr;
};

Window &shared() {
    static Window window;
    return window;
}

void scrollFrame(benchmark::State &state) {
    Window &window = shared();
    const QPointF place(400, 300);
    int notches = -1;
    for (auto _ : state) {
        QWheelEvent wheel(place, place, {}, {0, 120 * notches * static_cast<int>(state.range(0))}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.surface, &wheel);
        window.frame();
        const double y = window.table->viewport().minY();
        if (y <= 0 || y + 800 >= window.table->frame().size.height)
            notches = -notches;
    }
}
BENCHMARK(scrollFrame)->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond);

void selectFrame(benchmark::State &state) {
    Window &window = shared();
    int row = 0;
    for (auto _ : state) {
        const QPointF place(500, 60 + 30 * (row++ % 18));
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent click(type, place, place, Qt::LeftButton, type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(window.surface, &click);
        }
        window.frame();
    }
}
BENCHMARK(selectFrame)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    dispatch::reset(dispatch::makeRealClock());
    dispatch::setLoopHost(shared().loop);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
