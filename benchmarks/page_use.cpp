// SPDX-License-Identifier: MIT
#include "benchmarks/page_use.h"

#include <benchmark/benchmark.h>

namespace benchmarks {

std::shared_ptr<platform::PSListController> makePage(BenchPhone& phone, const char* className) {
    return phone.platform().classes.make<platform::PSListController>(className, phone.platform());
}

std::size_t produceScreen(platform::PSListController& page, std::size_t firstSection) {
    platform::UITableView& table = page.table();
    std::size_t produced = 0;
    for (std::size_t section = firstSection; section < page.numberOfSectionsInTableView(table); ++section) {
        const std::size_t rows = page.tableView_numberOfRowsInSection(table, section);
        for (std::size_t row = 0; row < rows && produced < rowsOfOneScreen; ++row, ++produced) {
            benchmark::DoNotOptimize(table.produceCellForRowAtIndexPath({section, row}));
        }
    }
    return produced;
}

std::shared_ptr<platform::PSListController> openPage(BenchPhone& phone, const char* className) {
    auto page = makePage(phone, className);
    page->view();
    page->viewWillAppear(false);
    produceScreen(*page);
    phone.drawn();
    return page;
}

}  // namespace benchmarks
