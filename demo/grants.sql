-- The least the program's database user needs, for the current database.
--
-- 'tarvessa'@'%' is a placeholder: put the shop's user name and host in its place and create the user
-- first, with a password of the shop's own (CREATE USER ... IDENTIFIED BY ...). Run this file with the
-- shop's database selected, as a user who may grant.
--
-- UPDATE goes with SELECT everywhere, because a WHERE clause reads the columns it names. DROP on the two
-- staging tables is what TRUNCATE asks for; the program drops and creates no table.

-- Documents: conversion, price correction, promotional price, cancelling, closing.
GRANT SELECT, UPDATE (nrpedido, TipoOperacao, situacaoorc, databaixa, Horario, status, unitario, totalped,
                      UnitarioPAF, TotalPaf) ON orcamento TO 'tarvessa'@'%';
GRANT SELECT, UPDATE (NrCaixa, Status, Fechamento) ON orcamento_controle TO 'tarvessa'@'%';
GRANT SELECT, UPDATE (nrpedido, tipoOperacao) ON observacao TO 'tarvessa'@'%';
GRANT SELECT ON Orcamento_Troca TO 'tarvessa'@'%';

-- Customers' terms, sellers' percentages, counters of the company.
GRANT SELECT, UPDATE (prazo, formapg, colunapreco, tabelas_preco) ON clientes TO 'tarvessa'@'%';
GRANT SELECT, UPDATE (ComissEsp1, ComissEsp2) ON vendedores TO 'tarvessa'@'%';
GRANT SELECT, UPDATE (contadorPV, ultpedido, UltimaPV) ON empresa TO 'tarvessa'@'%';
GRANT SELECT ON Finalizadoras TO 'tarvessa'@'%';

-- Stock.
GRANT SELECT, UPDATE (quantidade, Ultima_Saida, Nitem) ON produtos TO 'tarvessa'@'%';
GRANT SELECT ON FichaTecnica TO 'tarvessa'@'%';
GRANT SELECT, INSERT ON logestoque TO 'tarvessa'@'%';

-- What a closing books. Both are read, like the stock log, to find closings that were cut.
GRANT SELECT, INSERT ON areceber TO 'tarvessa'@'%';
GRANT SELECT, INSERT ON caixa TO 'tarvessa'@'%';

-- Invoices, read by the reports only.
GRANT SELECT ON movsaient TO 'tarvessa'@'%';
GRANT SELECT ON nfsaida TO 'tarvessa'@'%';

-- Targets and report staging.
GRANT SELECT, INSERT, UPDATE, DELETE ON metavendedoritem TO 'tarvessa'@'%';
GRANT SELECT, INSERT, UPDATE, DROP ON relat TO 'tarvessa'@'%';
GRANT SELECT, INSERT, UPDATE, DROP ON relat2 TO 'tarvessa'@'%';
