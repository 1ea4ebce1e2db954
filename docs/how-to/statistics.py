"""A photograph with its extremes, its histogram, and the sums of its columns and rows."""
import dax
from pictures import panels, photograph, save, show

coins = photograph("coins")
figure, axes = panels(3, 3.4, 2.6)
found = dax.min_max(coins)
show(axes[0], coins, f"darkest {found.min}, brightest {found.max}")
for (x, y), colour in ((found.min_at, "tab:blue"), (found.max_at, "tab:red")):
    axes[0].plot(x, y, "o", mfc="none", mec=colour, ms=9, mew=2)
counts = dax.histogram(coins)
axes[1].bar(range(256), counts.counts, 1)
for level, name in zip(dax.percentiles(coins, [0.01, 0.5, 0.99]), ("1 %", "median", "99 %")):
    axes[1].axvline(level, color="tab:red")
    axes[1].text(level, counts.counts.max(), f" {name}", va="top", fontsize=7)
axes[1].set_title("histogram and percentiles", fontsize=9)
axes[2].plot(dax.project_columns(coins) / coins.shape[0], label="columns")
axes[2].plot(dax.project_rows(coins) / coins.shape[1], label="rows")
axes[2].set_title("means of columns and rows", fontsize=9)
axes[2].legend(fontsize=7)
save(figure, "statistics")
