"""Results of one row each: frozen dataclasses of arrays of one length."""
import dataclasses
import html
from typing import Any, ClassVar, TypeVar

import numpy as np

Rows = TypeVar("Rows", bound="Table")
_SHOWN = 50  # rows of a table in a notebook


class Table:
    """Base of results that have a row for each thing found: indexing, dictionaries, and tables in notebooks."""

    # What the columns of a field are called; otherwise by the field, with numbers where it is (n, k).
    COLUMNS: ClassVar[dict[str, tuple[str, ...]]] = {}

    def __getitem__(self: Rows, index: Any) -> Rows:
        """Some of the rows, or the values of a single one."""
        return dataclasses.replace(self, **{name: array[index] for name, array in self._arrays().items()})

    def to_dict(self) -> dict[str, Any]:
        """{column: list of values}, as data frames take it; of a single row {column: value}."""
        columns: dict[str, Any] = {}
        for name, array in self._arrays().items():
            array = np.asarray(array)
            if array.ndim < (2 if self._many() else 1):
                columns[self.COLUMNS.get(name, (name,))[0]] = array.tolist()
                continue
            flat = array.reshape(len(array), -1) if self._many() else array.reshape(-1)
            names = self.COLUMNS.get(name) or tuple(f"{name}_{i}" for i in range(flat.shape[-1]))
            columns.update({each: flat[..., i].tolist() for i, each in enumerate(names)})
        return columns

    def _repr_html_(self) -> str:
        columns = {name: value if self._many() else [value] for name, value in self.to_dict().items()}
        count = len(next(iter(columns.values()), []))
        head = "".join(f"<th>{html.escape(name)}</th>" for name in columns)
        rows = [
            "".join(f"<td>{html.escape(f'{values[i]:.6g}')}</td>" for values in columns.values())
            for i in range(min(count, _SHOWN))
        ]
        body = "".join(f"<tr>{row}</tr>" for row in rows)
        rest = f"<p>{count - _SHOWN} more</p>" if count > _SHOWN else ""
        return f"<table><thead><tr>{head}</tr></thead><tbody>{body}</tbody></table>{rest}"

    def _arrays(self) -> dict[str, Any]:
        values = {field.name: getattr(self, field.name) for field in dataclasses.fields(self)}
        return {name: value for name, value in values.items() if isinstance(value, (np.ndarray, np.generic))}

    def _many(self) -> bool:
        """Whether this is a table, not one of its rows."""
        return min(np.ndim(array) for array in self._arrays().values()) > 0
