CLAUSES: dict[str, dict[int, list[str]]]
TEXTS: dict[int, str]
VERSION: str
