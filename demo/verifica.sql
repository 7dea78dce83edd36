-- Checks, before the program's first day in a shop, that the database is one it can work on. Reads only.
--
-- Run it with the shop's database selected, as an administrator of the server. It answers in two tables, one line per
-- check: "OK", or what is wrong and, where one statement is enough, the statement that puts it right.

SET NAMES utf8mb4;
SET SESSION sql_mode = 'NO_ENGINE_SUBSTITUTION';
SET SESSION group_concat_max_len = 100000;
-- From here on the server itself refuses every change.
START TRANSACTION READ ONLY;

-- Server, tables, columns, keys and indexes: from the server's own lists ----------------------------------------------
--
-- Kinds of columns: I whole number, N decimal with at least so many places, T text of at least so many characters,
-- D date, H time, M date and time.

SELECT conferencia, resultado FROM (
  SELECT 1 AS ordem, 'servidor: versão' AS conferencia,
    IF(VERSION() LIKE '%MariaDB%' AND (SUBSTRING_INDEX(VERSION(), '.', 1) + 0 > 10
        OR (SUBSTRING_INDEX(VERSION(), '.', 1) + 0 = 10
            AND SUBSTRING_INDEX(SUBSTRING_INDEX(VERSION(), '.', 2), '.', -1) + 0 >= 11)),
      'OK', CONCAT('o servidor é ', VERSION(), '; o programa é testado com MariaDB 10.11')) AS resultado
  UNION ALL SELECT 2, 'servidor: lower_case_table_names',
    IF(@@GLOBAL.lower_case_table_names <> 0, 'OK',
      'é 0, precisa ser 1; só se escolhe quando o servidor é criado')
  UNION ALL SELECT 3, 'servidor: sql_mode',
    IF(FIND_IN_SET('ONLY_FULL_GROUP_BY', @@GLOBAL.sql_mode) = 0, 'OK',
      'tem ONLY_FULL_GROUP_BY; ponha na fonte de dados INITSTMT = SET sql_mode=''NO_ENGINE_SUBSTITUTION''')
  UNION ALL SELECT 4, 'servidor: autocommit',
    IF(@@GLOBAL.autocommit = 1, 'OK', 'está desligado; o programa não confirma transações: SET GLOBAL autocommit = 1')

  UNION ALL SELECT 10, CONCAT('tabela ', r.tab),
    IF(MAX(t.tab) IS NULL, 'falta a tabela', IFNULL(GROUP_CONCAT(
      CASE
        WHEN c.col IS NULL THEN CONCAT('falta a coluna ', r.col)
        WHEN r.tipo = 'I' AND c.tipo NOT IN ('tinyint', 'smallint', 'mediumint', 'int', 'bigint')
            AND NOT (c.tipo = 'decimal' AND c.casas = 0)
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa ser número inteiro')
        WHEN r.tipo = 'N' AND c.tipo <> 'double' AND NOT (c.tipo = 'decimal' AND c.casas >= r.minimo)
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa ser decimal com ', r.minimo, ' casas')
        WHEN r.tipo = 'T' AND c.tipo NOT IN ('char', 'varchar', 'tinytext', 'text', 'mediumtext', 'longtext')
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa ser texto')
        WHEN r.tipo = 'T' AND c.largura < r.minimo
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa de ', r.minimo, ' caracteres')
        WHEN r.tipo = 'D' AND c.tipo NOT IN ('date', 'datetime', 'timestamp')
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa ser data')
        WHEN r.tipo = 'H' AND c.tipo NOT IN ('time', 'char', 'varchar')
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa ser hora')
        WHEN r.tipo = 'M' AND c.tipo NOT IN ('datetime', 'timestamp', 'char', 'varchar')
          THEN CONCAT(r.col, ' é ', c.completo, ', precisa ser data e hora')
      END ORDER BY r.col SEPARATOR '; '), 'OK'))
  FROM (
    SELECT 'orcamento' AS tab, 'id' AS col, 'I' AS tipo, 0 AS minimo
    UNION ALL SELECT 'orcamento', 'nrpedido', 'I', 0 UNION ALL SELECT 'orcamento', 'TipoOperacao', 'T', 1
    UNION ALL SELECT 'orcamento', 'situacaoorc', 'T', 1 UNION ALL SELECT 'orcamento', 'codigocli', 'T', 0
    UNION ALL SELECT 'orcamento', 'placa', 'T', 0 UNION ALL SELECT 'orcamento', 'nomevendedor', 'T', 0
    UNION ALL SELECT 'orcamento', 'Vendedor', 'I', 0 UNION ALL SELECT 'orcamento', 'dataabertura', 'D', 0
    UNION ALL SELECT 'orcamento', 'databaixa', 'D', 0 UNION ALL SELECT 'orcamento', 'Horario', 'H', 0
    UNION ALL SELECT 'orcamento', 'status', 'T', 1 UNION ALL SELECT 'orcamento', 'codigo', 'T', 0
    UNION ALL SELECT 'orcamento', 'quantidade', 'N', 3 UNION ALL SELECT 'orcamento', 'unitario', 'N', 2
    UNION ALL SELECT 'orcamento', 'totalped', 'N', 2 UNION ALL SELECT 'orcamento', 'UnitarioPAF', 'N', 2
    UNION ALL SELECT 'orcamento', 'TotalPaf', 'N', 2
    UNION ALL SELECT 'orcamento_controle', 'NrPedido', 'I', 0
    UNION ALL SELECT 'orcamento_controle', 'tipoOperacao', 'T', 1
    UNION ALL SELECT 'orcamento_controle', 'NrCaixa', 'I', 0
    UNION ALL SELECT 'orcamento_controle', 'Status', 'T', 1
    UNION ALL SELECT 'orcamento_controle', 'Fechamento', 'M', 0
    UNION ALL SELECT 'observacao', 'nrpedido', 'I', 0 UNION ALL SELECT 'observacao', 'tipoOperacao', 'T', 1
    UNION ALL SELECT 'Orcamento_Troca', 'codigo', 'T', 0
    UNION ALL SELECT 'Orcamento_Troca', 'codigocli', 'T', 0
    UNION ALL SELECT 'Orcamento_Troca', 'Vendedor', 'I', 0
    UNION ALL SELECT 'Orcamento_Troca', 'quantidade', 'N', 3
    UNION ALL SELECT 'Orcamento_Troca', 'pcfabrica', 'N', 2
    UNION ALL SELECT 'Orcamento_Troca', 'situacaoorc', 'T', 1
    UNION ALL SELECT 'Orcamento_Troca', 'databaixa', 'D', 0
    UNION ALL SELECT 'clientes', 'codigo', 'T', 0 UNION ALL SELECT 'clientes', 'nome', 'T', 0
    UNION ALL SELECT 'clientes', 'fantasia', 'T', 0 UNION ALL SELECT 'clientes', 'cidade', 'T', 0
    UNION ALL SELECT 'clientes', 'prazo', 'I', 0 UNION ALL SELECT 'clientes', 'formapg', 'T', 0
    UNION ALL SELECT 'clientes', 'colunapreco', 'T', 1 UNION ALL SELECT 'clientes', 'tabelas_preco', 'T', 4
    UNION ALL SELECT 'clientes', 'CNPJ_CPF', 'T', 0 UNION ALL SELECT 'clientes', 'ativocad', 'T', 1
    UNION ALL SELECT 'vendedores', 'codigovend', 'I', 0 UNION ALL SELECT 'vendedores', 'vendedor', 'T', 0
    UNION ALL SELECT 'vendedores', 'Ativo', 'T', 1 UNION ALL SELECT 'vendedores', 'ComissEsp1', 'N', 0
    UNION ALL SELECT 'vendedores', 'ComissEsp2', 'N', 0
    UNION ALL SELECT 'Finalizadoras', 'ID', 'I', 0 UNION ALL SELECT 'Finalizadoras', 'Descricao', 'T', 0
    UNION ALL SELECT 'Finalizadoras', 'avista', 'T', 1
    UNION ALL SELECT 'empresa', 'contadorPV', 'I', 0 UNION ALL SELECT 'empresa', 'ultpedido', 'I', 0
    UNION ALL SELECT 'empresa', 'UltimaPV', 'I', 0 UNION ALL SELECT 'empresa', 'ContaCTB1', 'T', 0
    UNION ALL SELECT 'empresa', 'PAF_ECF', 'T', 0
    UNION ALL SELECT 'empresa', 'ReservaAtualizaGridEstoque', 'T', 0
    UNION ALL SELECT 'empresa', 'Titulom1', 'T', 0 UNION ALL SELECT 'empresa', 'Titulom2', 'T', 0
    UNION ALL SELECT 'empresa', 'Titulom3', 'T', 0 UNION ALL SELECT 'empresa', 'Titulom4', 'T', 0
    UNION ALL SELECT 'produtos', 'codfabr', 'T', 0 UNION ALL SELECT 'produtos', 'descricao', 'T', 0
    UNION ALL SELECT 'produtos', 'aplicacao', 'T', 0 UNION ALL SELECT 'produtos', 'observacao', 'T', 0
    UNION ALL SELECT 'produtos', 'ativo', 'T', 1 UNION ALL SELECT 'produtos', 'Venda', 'N', 2
    UNION ALL SELECT 'produtos', 'Venda2', 'N', 2 UNION ALL SELECT 'produtos', 'Venda3', 'N', 2
    UNION ALL SELECT 'produtos', 'Venda4', 'N', 2 UNION ALL SELECT 'produtos', 'ValidadePromo', 'D', 0
    UNION ALL SELECT 'produtos', 'ValidadePromo2', 'D', 0 UNION ALL SELECT 'produtos', 'quantidade', 'N', 3
    UNION ALL SELECT 'produtos', 'quantidade2', 'N', 3 UNION ALL SELECT 'produtos', 'Ultima_Saida', 'D', 0
    UNION ALL SELECT 'produtos', 'Ultima_Alteracao', 'D', 0 UNION ALL SELECT 'produtos', 'Nitem', 'I', 0
    UNION ALL SELECT 'produtos', 'Localizacao', 'T', 0 UNION ALL SELECT 'produtos', 'Unidade', 'T', 0
    UNION ALL SELECT 'produtos', 'LinhaProd', 'I', 0
    UNION ALL SELECT 'FichaTecnica', 'codigo', 'T', 0 UNION ALL SELECT 'FichaTecnica', 'codigoprod', 'T', 0
    UNION ALL SELECT 'FichaTecnica', 'quantidade', 'N', 3
    UNION ALL SELECT 'logestoque', 'data', 'D', 0 UNION ALL SELECT 'logestoque', 'hora', 'H', 0
    UNION ALL SELECT 'logestoque', 'usuario', 'T', 0 UNION ALL SELECT 'logestoque', 'tela', 'T', 30
    UNION ALL SELECT 'logestoque', 'codproduto', 'T', 0 UNION ALL SELECT 'logestoque', 'qtdLoja', 'N', 3
    UNION ALL SELECT 'areceber', 'CodigoCli', 'T', 0 UNION ALL SELECT 'areceber', 'NomeCli', 'T', 0
    UNION ALL SELECT 'areceber', 'Emissao', 'D', 0 UNION ALL SELECT 'areceber', 'Vencto', 'D', 0
    UNION ALL SELECT 'areceber', 'Valor', 'N', 2 UNION ALL SELECT 'areceber', 'Historico', 'T', 28
    UNION ALL SELECT 'areceber', 'Nr_Pedido', 'I', 0 UNION ALL SELECT 'areceber', 'DataBaixa', 'D', 0
    UNION ALL SELECT 'areceber', 'ValorPago', 'N', 2 UNION ALL SELECT 'areceber', 'SitBaixa', 'T', 1
    UNION ALL SELECT 'areceber', 'TipoPag', 'T', 0 UNION ALL SELECT 'areceber', 'TipoCartao', 'T', 2
    UNION ALL SELECT 'areceber', 'CodigoVend', 'I', 0 UNION ALL SELECT 'areceber', 'CodigoMec', 'I', 0
    UNION ALL SELECT 'areceber', 'ContaCTB', 'T', 0
    UNION ALL SELECT 'caixa', 'cd_cta', 'T', 0 UNION ALL SELECT 'caixa', 'DataCx', 'D', 0
    UNION ALL SELECT 'caixa', 'Historico', 'T', 74 UNION ALL SELECT 'caixa', 'Valor', 'N', 2
    UNION ALL SELECT 'caixa', 'Finaliza1', 'T', 0 UNION ALL SELECT 'caixa', 'ValorFin1', 'N', 2
    UNION ALL SELECT 'caixa', 'CodigoLanc', 'T', 17 UNION ALL SELECT 'caixa', 'NrCaixa', 'I', 0
    UNION ALL SELECT 'caixa', 'USUARIO', 'T', 9
    UNION ALL SELECT 'nfsaida', 'nrnf', 'I', 0 UNION ALL SELECT 'nfsaida', 'SerieNF', 'T', 0
    UNION ALL SELECT 'nfsaida', 'CodVendedor', 'I', 0 UNION ALL SELECT 'nfsaida', 'razsoc', 'T', 0
    UNION ALL SELECT 'movsaient', 'nr_nf', 'I', 0 UNION ALL SELECT 'movsaient', 'serienf', 'T', 0
    UNION ALL SELECT 'movsaient', 'dataemissao', 'D', 0 UNION ALL SELECT 'movsaient', 'entrsai', 'T', 1
    UNION ALL SELECT 'movsaient', 'cancelado', 'T', 1 UNION ALL SELECT 'movsaient', 'cfop', 'T', 4
    UNION ALL SELECT 'movsaient', 'codigo', 'T', 0 UNION ALL SELECT 'movsaient', 'descricao', 'T', 0
    UNION ALL SELECT 'movsaient', 'quantunit', 'N', 3 UNION ALL SELECT 'movsaient', 'totalvenda', 'N', 2
    UNION ALL SELECT 'movsaient', 'vlr_tot_item', 'N', 2 UNION ALL SELECT 'movsaient', 'cnpj_cpf', 'T', 0
    UNION ALL SELECT 'metavendedoritem', 'ID', 'I', 0
    UNION ALL SELECT 'metavendedoritem', 'CodVendedor', 'I', 0
    UNION ALL SELECT 'metavendedoritem', 'CodigoProduto', 'T', 0
    UNION ALL SELECT 'metavendedoritem', 'Quantidade', 'N', 3
    UNION ALL SELECT 'metavendedoritem', 'Vendido', 'N', 3
    UNION ALL SELECT 'metavendedoritem', 'TotalVendas', 'N', 2
    UNION ALL SELECT 'metavendedoritem', 'QtdDevolucao', 'N', 3
    UNION ALL SELECT 'relat', 'Codigo1', 'T', 0 UNION ALL SELECT 'relat', 'Valor1', 'N', 2
    UNION ALL SELECT 'relat', 'Valor2', 'N', 2 UNION ALL SELECT 'relat', 'Valor3', 'N', 2
    UNION ALL SELECT 'relat', 'Texto1', 'T', 0 UNION ALL SELECT 'relat', 'Texto2', 'T', 0
    UNION ALL SELECT 'relat', 'Texto3', 'T', 0
    UNION ALL SELECT 'relat2', 'Codigo1', 'T', 0 UNION ALL SELECT 'relat2', 'Codigo2', 'T', 0
    UNION ALL SELECT 'relat2', 'Texto1', 'T', 0 UNION ALL SELECT 'relat2', 'Texto2', 'T', 0
    UNION ALL SELECT 'relat2', 'Texto3', 'T', 0 UNION ALL SELECT 'relat2', 'Texto4', 'T', 0
    UNION ALL SELECT 'relat2', 'Texto5', 'T', 0 UNION ALL SELECT 'relat2', 'Texto6', 'T', 0
    UNION ALL SELECT 'relat2', 'Texto7', 'T', 0 UNION ALL SELECT 'relat2', 'Valor1', 'N', 2
    UNION ALL SELECT 'relat2', 'Valor2', 'N', 2 UNION ALL SELECT 'relat2', 'Valor3', 'N', 2
    UNION ALL SELECT 'relat2', 'Valor4', 'N', 2 UNION ALL SELECT 'relat2', 'Valor5', 'N', 2
    UNION ALL SELECT 'relat2', 'Valor6', 'N', 2 UNION ALL SELECT 'relat2', 'Valor7', 'N', 2
    UNION ALL SELECT 'relat2', 'Valor8', 'N', 2 UNION ALL SELECT 'relat2', 'Valor9', 'N', 2
    UNION ALL SELECT 'relat2', 'Quant', 'N', 3 UNION ALL SELECT 'relat2', 'Data1', 'T', 10
  ) r
  LEFT JOIN (SELECT LOWER(TABLE_NAME) AS tab FROM information_schema.TABLES WHERE TABLE_SCHEMA = DATABASE()) t
    ON t.tab = LOWER(r.tab)
  LEFT JOIN (SELECT LOWER(TABLE_NAME) AS tab, LOWER(COLUMN_NAME) AS col, DATA_TYPE AS tipo, COLUMN_TYPE AS completo,
      NUMERIC_SCALE AS casas, CHARACTER_MAXIMUM_LENGTH AS largura
      FROM information_schema.COLUMNS WHERE TABLE_SCHEMA = DATABASE()) c
    ON c.tab = LOWER(r.tab) AND c.col = LOWER(r.col)
  GROUP BY r.tab

  UNION ALL SELECT 20, CONCAT('número automático: ', r.tab, '.', r.col),
    IF(c.tab IS NULL, 'a coluna precisa de AUTO_INCREMENT', 'OK')
  FROM (SELECT 'orcamento' AS tab, 'id' AS col UNION ALL SELECT 'metavendedoritem', 'ID') r
  LEFT JOIN (SELECT LOWER(TABLE_NAME) AS tab, LOWER(COLUMN_NAME) AS col FROM information_schema.COLUMNS
      WHERE TABLE_SCHEMA = DATABASE() AND EXTRA LIKE '%auto_increment%') c
    ON c.tab = LOWER(r.tab) AND c.col = LOWER(r.col)

  UNION ALL SELECT 21, 'texto: areceber.NomeCli e clientes.nome',
    IF(MAX(IF(LOWER(TABLE_NAME) = 'areceber', CHARACTER_MAXIMUM_LENGTH, 0))
        >= MAX(IF(LOWER(TABLE_NAME) = 'clientes', CHARACTER_MAXIMUM_LENGTH, 0)),
      'OK', 'NomeCli é mais curta que clientes.nome')
  FROM information_schema.COLUMNS
  WHERE TABLE_SCHEMA = DATABASE() AND CONCAT(LOWER(TABLE_NAME), '.', LOWER(COLUMN_NAME))
    IN ('areceber.nomecli', 'clientes.nome')

  UNION ALL SELECT 22, CONCAT('colunas que o programa não preenche: ', r.tab),
    IFNULL(CONCAT('sem valor padrão: ', GROUP_CONCAT(c.COLUMN_NAME ORDER BY c.COLUMN_NAME SEPARATOR ', ')), 'OK')
  FROM (SELECT 'areceber' AS tab, 'codigocli,nomecli,emissao,vencto,valor,historico,nr_pedido,databaixa,valorpago,'
      'sitbaixa,tipopag,codigovend,codigomec,contactb' AS preenche
    UNION ALL SELECT 'caixa', 'cd_cta,datacx,historico,valor,finaliza1,valorfin1,codigolanc,nrcaixa,usuario'
    UNION ALL SELECT 'logestoque', 'data,hora,usuario,tela,codproduto,qtdloja'
    UNION ALL SELECT 'metavendedoritem', 'codvendedor,codigoproduto,quantidade'
    UNION ALL SELECT 'relat', '' UNION ALL SELECT 'relat2', '') r
  LEFT JOIN information_schema.COLUMNS c ON c.TABLE_SCHEMA = DATABASE() AND LOWER(c.TABLE_NAME) = r.tab
    AND c.IS_NULLABLE = 'NO' AND c.COLUMN_DEFAULT IS NULL AND c.EXTRA NOT LIKE '%auto_increment%'
    AND FIND_IN_SET(LOWER(c.COLUMN_NAME), r.preenche) = 0
  GROUP BY r.tab

  UNION ALL SELECT 23, 'colação das chaves comparadas',
    IF(COUNT(DISTINCT COLLATION_NAME) <= 1 AND SUM(COLLATION_NAME NOT LIKE '%\_ci') = 0, 'OK',
      CONCAT('precisa ser uma só, sem diferença entre maiúsculas e minúsculas: ',
        GROUP_CONCAT(CONCAT(TABLE_NAME, '.', COLUMN_NAME, ' ', COLLATION_NAME)
          ORDER BY COLLATION_NAME, TABLE_NAME, COLUMN_NAME SEPARATOR ', ')))
  FROM information_schema.COLUMNS
  WHERE TABLE_SCHEMA = DATABASE() AND COLLATION_NAME IS NOT NULL AND CONCAT(LOWER(TABLE_NAME), '.', LOWER(COLUMN_NAME))
    IN ('orcamento.codigo', 'orcamento.codigocli', 'clientes.codigo', 'clientes.cnpj_cpf', 'clientes.formapg',
      'finalizadoras.descricao', 'produtos.codfabr', 'fichatecnica.codigo', 'fichatecnica.codigoprod',
      'movsaient.codigo', 'movsaient.cnpj_cpf', 'movsaient.serienf', 'nfsaida.serienf', 'orcamento_troca.codigo',
      'orcamento_troca.codigocli', 'metavendedoritem.codigoproduto', 'relat.codigo1', 'relat2.codigo1',
      'relat2.codigo2')

  UNION ALL SELECT 30, CONCAT('índice: ', r.tab, ' (', REPLACE(r.cols, ',', ', '), ')'),
    IF(MAX(i.cols) IS NULL, CONCAT('falta: CREATE INDEX ', LOWER(r.tab), '_', LOWER(REPLACE(r.cols, ',', '_')), ' ON ',
      r.tab, ' (', REPLACE(r.cols, ',', ', '), ');'), 'OK')
  FROM (
    SELECT 'orcamento' AS tab, 'nrpedido,TipoOperacao' AS cols
    UNION ALL SELECT 'orcamento', 'TipoOperacao,situacaoorc,dataabertura'
    UNION ALL SELECT 'orcamento', 'codigo,TipoOperacao,situacaoorc'
    UNION ALL SELECT 'orcamento', 'id'
    UNION ALL SELECT 'orcamento_controle', 'NrPedido,tipoOperacao'
    UNION ALL SELECT 'observacao', 'nrpedido,tipoOperacao'
    UNION ALL SELECT 'clientes', 'codigo'
    UNION ALL SELECT 'produtos', 'codfabr'
    UNION ALL SELECT 'vendedores', 'codigovend'
    UNION ALL SELECT 'Finalizadoras', 'Descricao'
    UNION ALL SELECT 'clientes', 'CNPJ_CPF'
    UNION ALL SELECT 'relat', 'Codigo1'
    UNION ALL SELECT 'FichaTecnica', 'codigoprod'
    UNION ALL SELECT 'movsaient', 'dataemissao,entrsai'
    UNION ALL SELECT 'nfsaida', 'nrnf,SerieNF'
    UNION ALL SELECT 'Orcamento_Troca', 'situacaoorc,databaixa'
    UNION ALL SELECT 'metavendedoritem', 'CodVendedor,CodigoProduto'
  ) r
  LEFT JOIN (SELECT LOWER(TABLE_NAME) AS tab,
      CONCAT(GROUP_CONCAT(LOWER(COLUMN_NAME) ORDER BY SEQ_IN_INDEX SEPARATOR ','), ',') AS cols
      FROM information_schema.STATISTICS WHERE TABLE_SCHEMA = DATABASE() GROUP BY TABLE_NAME, INDEX_NAME) i
    ON i.tab = LOWER(r.tab) AND LEFT(i.cols, LENGTH(r.cols) + 1) = CONCAT(LOWER(r.cols), ',')
  GROUP BY r.tab, r.cols

  -- What costs time and nothing else. On a cluster the scratch tables stay in InnoDB, the only engine it replicates.
  UNION ALL SELECT 31, CONCAT('velocidade dos relatórios: ', r.tab),
    CASE
      WHEN t.motor IS NULL THEN 'OK'
      WHEN t.motor = 'InnoDB' AND c.maria AND NOT c.cluster
        THEN CONCAT('InnoDB é lento para rascunho: ALTER TABLE ', r.tab,
          ' ENGINE=Aria TRANSACTIONAL=0;')
      WHEN r.tab = 'relat2' AND i.indice IS NOT NULL
        THEN CONCAT('índice sem uso: ALTER TABLE relat2 DROP INDEX ', i.indice, ';')
      ELSE 'OK'
    END
  FROM (SELECT 'relat' AS tab UNION ALL SELECT 'relat2') r
  CROSS JOIN (SELECT VERSION() LIKE '%MariaDB%' AS maria,
      0 /*M! + (SELECT COUNT(*) FROM information_schema.SYSTEM_VARIABLES
        WHERE VARIABLE_NAME = 'WSREP_ON' AND GLOBAL_VALUE = 'ON') */ AS cluster) c
  LEFT JOIN (SELECT LOWER(TABLE_NAME) AS tab, ENGINE AS motor FROM information_schema.TABLES
      WHERE TABLE_SCHEMA = DATABASE()) t ON t.tab = r.tab
  LEFT JOIN (SELECT LOWER(TABLE_NAME) AS tab, MAX(INDEX_NAME) AS indice FROM information_schema.STATISTICS
      WHERE TABLE_SCHEMA = DATABASE() AND LOWER(COLUMN_NAME) = 'codigo1' AND SEQ_IN_INDEX = 1 GROUP BY TABLE_NAME) i
    ON i.tab = r.tab
) conferencias
ORDER BY ordem, conferencia;

-- Data: only what the tables at hand allow ----------------------------------------------------------------------------
--
-- Each check is a text that becomes part of one query when its columns exist; a query that names a missing table would
-- end the whole run. At most ten values are listed.

SET @colunas = IF(@@GLOBAL.lower_case_table_names = 0, '', (
  SELECT GROUP_CONCAT(LOWER(CONCAT(TABLE_NAME, '.', COLUMN_NAME)))
  FROM information_schema.COLUMNS WHERE TABLE_SCHEMA = DATABASE()
    AND LOWER(TABLE_NAME) IN ('clientes', 'empresa', 'finalizadoras', 'orcamento', 'produtos')));
SET @nada = "'não conferido: falta a tabela ou a coluna'";

SET @empresa = IF(FIND_IN_SET('empresa.contadorpv', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 1, 'OK', CONCAT('tem ', COUNT(*), ' linhas')) FROM empresa)", @nada);

SET @contador = IF(FIND_IN_SET('empresa.contadorpv', @colunas) > 0 AND FIND_IN_SET('orcamento.nrpedido', @colunas) > 0
    AND FIND_IN_SET('orcamento.tipooperacao', @colunas) > 0,
  "(SELECT IF(IFNULL((SELECT MIN(contadorPV) FROM empresa), -1) >= IFNULL(MAX(nrpedido), 0), 'OK',
      CONCAT('contadorPV é ', IFNULL((SELECT MIN(contadorPV) FROM empresa), 'vazio'), ' e a última PV é ', MAX(nrpedido),
        ': UPDATE empresa SET contadorPV = ', MAX(nrpedido), ';'))
    FROM orcamento WHERE TipoOperacao = 'P')", @nada);

SET @estoque = IF(FIND_IN_SET('produtos.quantidade', @colunas) > 0 AND FIND_IN_SET('produtos.codfabr', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' produtos sem valor: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(codfabr USING utf8mb4) ORDER BY codfabr SEPARATOR ', '), ', ', 10)))
    FROM produtos WHERE quantidade IS NULL)", @nada);

SET @deposito = IF(FIND_IN_SET('produtos.quantidade2', @colunas) > 0 AND FIND_IN_SET('produtos.codfabr', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' produtos sem valor: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(codfabr USING utf8mb4) ORDER BY codfabr SEPARATOR ', '), ', ', 10),
      ': UPDATE produtos SET quantidade2 = 0 WHERE quantidade2 IS NULL;'))
    FROM produtos WHERE quantidade2 IS NULL)", @nada);

SET @cliente_repetido = IF(FIND_IN_SET('clientes.codigo', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' códigos: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(codigo USING utf8mb4) ORDER BY codigo SEPARATOR ', '), ', ', 10)))
    FROM (SELECT codigo FROM clientes GROUP BY codigo HAVING COUNT(*) > 1) x)", @nada);

SET @produto_repetido = IF(FIND_IN_SET('produtos.codfabr', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' códigos: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(codfabr USING utf8mb4) ORDER BY codfabr SEPARATOR ', '), ', ', 10)))
    FROM (SELECT codfabr FROM produtos GROUP BY codfabr HAVING COUNT(*) > 1) x)", @nada);

SET @forma_repetida = IF(FIND_IN_SET('finalizadoras.descricao', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' nomes: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(Descricao USING utf8mb4) ORDER BY Descricao SEPARATOR ', '), ', ', 10)))
    FROM (SELECT Descricao FROM Finalizadoras GROUP BY Descricao HAVING COUNT(*) > 1) x)", @nada);

SET @cliente_caractere = IF(FIND_IN_SET('clientes.codigo', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' códigos: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(codigo USING utf8mb4) ORDER BY codigo SEPARATOR ', '), ', ', 10)))
    FROM clientes WHERE INSTR(codigo, CHAR(39)) > 0 OR INSTR(codigo, CHAR(92)) > 0)", @nada);

SET @produto_caractere = IF(FIND_IN_SET('produtos.codfabr', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' códigos: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(codfabr USING utf8mb4) ORDER BY codfabr SEPARATOR ', '), ', ', 10)))
    FROM produtos WHERE INSTR(codfabr, CHAR(39)) > 0 OR INSTR(codfabr, CHAR(92)) > 0)", @nada);

SET @forma_caractere = IF(FIND_IN_SET('finalizadoras.descricao', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT(COUNT(*), ' nomes: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(Descricao USING utf8mb4) ORDER BY Descricao SEPARATOR ', '), ', ', 10)))
    FROM Finalizadoras WHERE INSTR(Descricao, CHAR(39)) > 0 OR INSTR(Descricao, CHAR(92)) > 0)", @nada);

-- The two columns may have different collations: that is told above, and must not end this query.
SET @forma_sem_cadastro = IF(FIND_IN_SET('finalizadoras.descricao', @colunas) > 0
    AND FIND_IN_SET('clientes.formapg', @colunas) > 0,
  "(SELECT IF(COUNT(*) = 0, 'OK', CONCAT('em clientes e não em Finalizadoras: ', SUBSTRING_INDEX(GROUP_CONCAT(
      CONVERT(c.formapg USING utf8mb4) ORDER BY c.formapg SEPARATOR ', '), ', ', 10)))
    FROM (SELECT DISTINCT formapg FROM clientes WHERE formapg NOT IN ('', '(Nenhuma)')) c
    LEFT JOIN Finalizadoras f ON CONVERT(f.Descricao USING utf8mb4) COLLATE utf8mb4_general_ci
      = CONVERT(c.formapg USING utf8mb4) COLLATE utf8mb4_general_ci
    WHERE f.Descricao IS NULL)", @nada);

SET @consulta = CONCAT(
  "SELECT 'empresa: exatamente uma linha' AS conferencia, ", @empresa, " AS resultado",
  " UNION ALL SELECT 'empresa: contadorPV não está atrás da última PV', ", @contador,
  " UNION ALL SELECT 'produtos: quantidade preenchida', ", @estoque,
  " UNION ALL SELECT 'produtos: quantidade2 preenchida', ", @deposito,
  " UNION ALL SELECT 'clientes: código repetido', ", @cliente_repetido,
  " UNION ALL SELECT 'clientes: código com apóstrofo ou barra invertida', ", @cliente_caractere,
  " UNION ALL SELECT 'produtos: código repetido', ", @produto_repetido,
  " UNION ALL SELECT 'produtos: código com apóstrofo ou barra invertida', ", @produto_caractere,
  " UNION ALL SELECT 'Finalizadoras: nome repetido', ", @forma_repetida,
  " UNION ALL SELECT 'Finalizadoras: nome com apóstrofo ou barra invertida', ", @forma_caractere,
  " UNION ALL SELECT 'Finalizadoras: formas de pagamento em uso', ", @forma_sem_cadastro);
PREPARE conferencias FROM @consulta;
EXECUTE conferencias;
DEALLOCATE PREPARE conferencias;

COMMIT;
