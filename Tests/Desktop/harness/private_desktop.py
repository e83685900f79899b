"""What every private desktop has: the program under test, and an end that leaves nothing behind."""

import sys
from pathlib import Path

from .product import Product
from .session import Session


class PrivateDesktop:
    """A context manager; a subclass makes `session` and sets `program`."""

    session: Session
    program: Path | None = None

    def __init__(self) -> None:
        self.products: list[Product] = []

    # The program under test

    def launch(self, *options: str, ready: bool = True, environment: dict[str, str] | None = None) -> Product:
        product = Product(self.session, self.program, *options, environment=environment)
        self.products.append(product)
        if ready:
            product.until_ready()
        return product

    def press(self, product: Product, action: str) -> None:
        """Presses an action's shortcut and waits until the program has handled it, with all retries."""
        self.keyboard.press(action)
        product.until_no_retry()

    # End

    def __enter__(self):
        return self

    def __exit__(self, kind, value, trace) -> None:
        if kind is not None:
            self.print_failure()
        try:
            if kind is None:
                for product in self.products:
                    if product.process.poll() is None:
                        product.terminate()
                self.check()
        finally:
            self.close()

    def check(self) -> None:
        """What has to hold after a case that passed."""

    def print_failure(self) -> None:
        """What helps to understand a case that failed."""
        print(self.session.log_text(), file=sys.stderr)
        for product in self.products:
            print(f"--- statuses: {product.statuses}", file=sys.stderr)

    def close_connections(self) -> None:
        """Closes the tests' own connections, open or not."""

    def close(self) -> None:
        """Ends everything that runs."""
        for product in self.products:
            product.close()
        self.close_connections()
        self.session.close()
