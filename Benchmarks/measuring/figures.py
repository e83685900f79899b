"""Statistics of samples."""

from statistics import median

__all__ = ["median", "nearest_rank", "ratio"]


def nearest_rank(samples: list[float], percent: int) -> float:
    """The smallest sample that at least `percent` of all samples do not exceed."""
    return sorted(samples)[-(-len(samples) * percent // 100) - 1]


def ratio(value: float, reference: float) -> str:
    return f"{value / reference:.2f}"
